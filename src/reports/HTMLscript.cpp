#include "reports/HTMLscript.h"

#include "core/ErrorHandler.h"
#include "core/Session.h"
#include "platform/Windows1252.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <array>
#include <memory>

int HTMLBorder = 0;

namespace
{
std::unique_ptr<QSaveFile> g_output;

const QString headLines = QStringLiteral(R"(<style>
<!--
@font-face
{font-family:Verdana;
panose-1:2 11 6 4 3 5 4 4 2 4;
mso-font-charset:0;
mso-generic-font-family:swiss;
mso-font-pitch:variable;
mso-font-signature:647 0 0 0 159 0;}
p.MsoNormal , li.MsoNormal, div.MsoNormal
{mso-style-parent:"";
margin:0cm;
margin-bottom:.0001pt;
mso-pagination:widow-orphan;
font-size:9.0pt;
mso-bidi-font-size:12.0pt;
font-family:Verdana;
mso-fareast-font-family:"Times New Roman";
mso-bidi-font-family:"Times; New Roman"}
-->
</style>
</head>
<body lang=EN-GB style='tab-interval:36.0pt'>)");

void WriteLine(const QString &text)
{
    if (g_output && g_output->isOpen())
        g_output->write(ToWindows1252(text) + '\n');
}

/// The user's letterhead goes in byte by byte: whoever wrote it chose its encoding for this page.
void CopyHeaderFile()
{
    QFile header(gHeaderFile);
    if (!g_output->isOpen() || !header.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = header.readAll();
    g_output->write(bytes);
    if (!bytes.isEmpty() && !bytes.endsWith('\n'))
        g_output->write("\n");
}

QString SizeStyle(int size)
{
    static constexpr std::array points = {"8.0", "7.0", "8.0", "9.0", "10.0", "12.0", "14.0"};
    const size_t code = size >= 1 && size <= 6 ? static_cast<size_t>(size) : 0;
    return u"font-size:" % QLatin1String(points[code]) % u"pt;mso-bidi-font-size:12.0pt";
}

QLatin1String Word(const std::array<const char *, 5> &words, int code)
{
    return QLatin1String(words[code >= 0 && code <= 4 ? static_cast<size_t>(code) : 0]);
}

QString Link(QStringView scheme, const QString &value)
{
    return u"<a href=\"" % scheme % value % u"\">" % value % u"</a>";
}
} // namespace

QString HTML_OutputPath()
{
    return gDocDir % u"/temp.htm";
}

void HTML_Start(const QString &title)
{
    HTML_Discard();
    g_output = std::make_unique<QSaveFile>(HTML_OutputPath());
    g_output->open(QIODevice::WriteOnly);
    WriteLine(QStringLiteral("<html>"));
    WriteLine(QStringLiteral("<head>"));
    WriteLine(
        QStringLiteral("<meta http-equiv=Content-Type content=\"Text / html\"; Charset = windows - 1252; >"));
    WriteLine(u"<title>" % title % u"</title>");
    WriteLine(headLines);
    CopyHeaderFile();
    HTML_Text(1, 5, title);
}

bool HTML_Finish()
{
    if (!g_output)
        return false;
    WriteLine(QStringLiteral("</BODY>"));
    WriteLine(QStringLiteral("</HTML>"));
    const bool written = g_output->isOpen() && g_output->flush() && g_output->commit();
    if (!written) {
        const QString file = QDir::toNativeSeparators(HTML_OutputPath());
        SetCurrentError({static_cast<int>(g_output->error()),
                         file,
                         u"The report could not be written to " % file % u": " % g_output->errorString(),
                         {}});
    }
    g_output.reset();
    return written;
}

void HTML_Discard()
{
    g_output.reset();
}

void HTML_Text(int mode, int size, const QString &text)
{
    if (mode == 0) {
        WriteLine(text);
        return;
    }
    const QString bold = mode == 1 ? QStringLiteral("<b>") : QString();
    const QString boldEnd = mode == 1 ? QStringLiteral("</b>") : QString();
    WriteLine(u"<p class=MsoNormal>" % bold % u"<span style='" % SizeStyle(size) % u"'>" % text % u"</span>" %
              boldEnd % u"</p>");
}

void HTML_Table()
{
    WriteLine(QStringLiteral(
        "<table border=0 cellspacing=0 cellpadding=0 style='border-collapse:collapse;border:none;"
        "mso-border-alt:solid windowtext .5pt;mso-padding-alt:3pt 3pt 3pt 3pt'>"));
}

void HTML_TableEnd()
{
    WriteLine(QStringLiteral("</TABLE>"));
}

void HTML_RowStart()
{
    WriteLine(QStringLiteral("<TR>"));
}

void HTML_RowEnd()
{
    WriteLine(QStringLiteral("</TR>"));
}

void HTML_Rule()
{
    WriteLine(QStringLiteral("<HR>"));
}

void HTML_Cell(int colSpan, int mode, int hAlign, int vAlign, int size, int width, const QString &text)
{
    static constexpr std::array across = {"left", "center", "right", "justify", "char"};
    static constexpr std::array down = {"top", "middle", "bottom", "baseline", "top"};
    const QString border = HTMLBorder == 1 ? QStringLiteral("solid windowtext .5pt") : QStringLiteral("none");
    QString cell = QStringLiteral("<td");
    if (width >= 1)
        cell += u" width = " % QString::number(width);
    cell += u" align = " % Word(across, hAlign) % u"  valign = " % Word(down, vAlign) % u' ';
    // No blank behind the span: every report so far has it so.
    if (colSpan >= 2)
        cell += u" colspan=" % QString::number(colSpan);
    cell += u"style='border:" % border % u";border-left:none;mso-border-left-alt:" % border %
            u";padding:2pt 2pt 2pt 2pt'>";
    WriteLine(cell);
    HTML_Text(mode, size, text);
    WriteLine(QStringLiteral("</td>"));
}

void HTML_LabelRow(const QString &label, const QString &value)
{
    HTML_RowStart();
    HTML_Cell(0, 1, 0, 0, 0, 100, QStringLiteral("&nbsp;"));
    HTML_Cell(0, 1, 0, 0, 0, 200, label);
    HTML_Cell(0, 0, 0, 0, 0, 200, value);
    HTML_RowEnd();
}

void HTML_BlankRow()
{
    HTML_RowStart();
    HTML_Cell(0, 1, 0, 0, 2, 0, QStringLiteral("&nbsp;"));
    HTML_RowEnd();
}

QString HTML_FieldText(const Recordset::Row &row, QStringView fieldName)
{
    const QString value = row.Text(fieldName);
    if (value.isEmpty())
        return value;
    const QString name = fieldName.toString().toUpper();
    if (name.contains(u"EMAIL"))
        return Link(u"mailto:", value);
    if (name.contains(u"URL") || name.contains(u"WEB"))
        return Link(u"http://", value);
    return value;
}
