#include "reports/HTMLscript.h"

#include "core/ErrorHandler.h"
#include "core/Session.h"
#include "platform/Windows1252.h"
#include "reports/ReportHeader.h"

#include <QDir>
#include <QSaveFile>

#include <array>
#include <memory>

int HTMLBorder = 0;

namespace
{
std::unique_ptr<QSaveFile> g_output;
QString g_headerFault;

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

/// What is written and not yet in the file. A report has hundreds of short lines for each person: they go
/// out together.
QByteArray g_buffer;

void Flush()
{
    if (g_output && g_output->isOpen())
        g_output->write(g_buffer);
    g_buffer.resize(0);
}

/// A line of the output, ended when it goes.
class Line final
{
public:
    Line() = default;
    ~Line()
    {
        constexpr qsizetype enough = 1 << 16;
        g_buffer.append('\n');
        if (g_buffer.size() >= enough)
            Flush();
    }
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    Line &operator<<(QByteArrayView ascii)
    {
        g_buffer.append(ascii.data(), ascii.size());
        return *this;
    }
    Line &operator<<(QStringView text)
    {
        AppendWindows1252(g_buffer, text);
        return *this;
    }
};

const char *SizePoints(int size)
{
    static constexpr std::array points = {"8.0", "7.0", "8.0", "9.0", "10.0", "12.0", "14.0"};
    return points[size >= 1 && size <= 6 ? static_cast<size_t>(size) : 0];
}

const char *Word(const std::array<const char *, 5> &words, int code)
{
    return words[code >= 0 && code <= 4 ? static_cast<size_t>(code) : 0];
}

void WriteCellStart(int colSpan, int hAlign, int vAlign, int width)
{
    static constexpr std::array across = {"left", "center", "right", "justify", "char"};
    static constexpr std::array down = {"top", "middle", "bottom", "baseline", "top"};
    const char *border = HTMLBorder == 1 ? "solid windowtext .5pt" : "none";
    Line cell;
    cell << "<td";
    if (width >= 1)
        cell << " width = " << QByteArray::number(width);
    cell << " align = " << Word(across, hAlign) << "  valign = " << Word(down, vAlign) << " ";
    // No blank behind the span: every report so far has it so.
    if (colSpan >= 2)
        cell << " colspan=" << QByteArray::number(colSpan);
    cell << "style='border:" << border << ";border-left:none;mso-border-left-alt:" << border
         << ";padding:2pt 2pt 2pt 2pt'>";
}

/// What `write` writes, taken out of the output again.
template <typename Write>
QByteArray Written(Write &&write)
{
    Flush();
    write();
    const QByteArray bytes = g_buffer;
    g_buffer.resize(0);
    return bytes;
}
} // namespace

QString HTML_OutputPath()
{
    return gDocDir % u"/temp.htm";
}

bool HTML_Start(const QString &title)
{
    HTML_Discard();
    g_output = std::make_unique<QSaveFile>(HTML_OutputPath());
    const bool isOpen = g_output->open(QIODevice::WriteOnly);
    Line() << "<html>";
    Line() << "<head>";
    Line() << "<meta http-equiv=Content-Type content=\"Text / html\"; Charset = windows - 1252; >";
    Line() << "<title>" << title << "</title>";
    Line() << headLines;
    const ReportHeader header = ReadReportHeader(gHeaderFile);
    g_headerFault = header.fault;
    g_buffer.append(header.bytes);
    HTML_Text(1, 5, title);
    return isOpen;
}

QString HTML_HeaderFault()
{
    return g_headerFault;
}

bool HTML_Finish(HtmlEnd end)
{
    if (!g_output)
        return false;
    Line() << (end == HtmlEnd::Small ? "</body>" : "</BODY>");
    Line() << (end == HtmlEnd::Small ? "</html>" : "</HTML>");
    Flush();
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
    g_buffer.resize(0);
    g_output.reset();
}

void HTML_Text(int mode, int size, const QString &text)
{
    if (mode == 0)
        Line() << text;
    else
        Line() << "<p class=MsoNormal>" << (mode == 1 ? "<b>" : "")
               << "<span style='font-size:" << SizePoints(size) << "pt;mso-bidi-font-size:12.0pt'>" << text
               << "</span>" << (mode == 1 ? "</b>" : "") << "</p>";
}

void HTML_Table()
{
    Line() << "<table border=0 cellspacing=0 cellpadding=0 style='border-collapse:collapse;border:none;"
              "mso-border-alt:solid windowtext .5pt;mso-padding-alt:3pt 3pt 3pt 3pt'>";
}

void HTML_TableEnd()
{
    Line() << "</TABLE>";
}

void HTML_RowStart()
{
    Line() << "<TR>";
}

void HTML_RowEnd()
{
    Line() << "</TR>";
}

void HTML_Rule()
{
    Line() << "<HR>";
}

void HTML_Cell(int colSpan, int mode, int hAlign, int vAlign, int size, int width, const QString &text)
{
    WriteCellStart(colSpan, hAlign, vAlign, width);
    HTML_Text(mode, size, text);
    Line() << "</td>";
}

void HTML_LabelRow(const QString &label, const QString &value)
{
    // The row that reports are made of: all of it that is always the same is put together once.
    static int border = -1;
    static QByteArray start;
    static QByteArray between;
    if (border != HTMLBorder) {
        border = HTMLBorder;
        start = Written([] {
            HTML_RowStart();
            HTML_Cell(0, 1, 0, 0, 0, 100, QStringLiteral("&nbsp;"));
            WriteCellStart(0, 0, 0, 200);
        });
        between = Written([] {
            Line() << "</td>";
            WriteCellStart(0, 0, 0, 200);
        });
    }
    g_buffer.append(start);
    HTML_Text(1, 0, label);
    g_buffer.append(between);
    HTML_Text(0, 0, value);
    Line() << "</td>\n</TR>";
}

void HTML_BlankRow()
{
    HTML_RowStart();
    HTML_Cell(0, 1, 0, 0, 2, 0, QStringLiteral("&nbsp;"));
    HTML_RowEnd();
}

QString HTML_FieldText(const Recordset::Row &row, QStringView fieldName)
{
    return HTML_LinkText(HTML_LinkScheme(fieldName), row.Text(fieldName));
}

QString HTML_LinkScheme(QStringView fieldName)
{
    if (fieldName.contains(u"EMAIL", Qt::CaseInsensitive))
        return QStringLiteral("mailto:");
    if (fieldName.contains(u"URL", Qt::CaseInsensitive) || fieldName.contains(u"WEB", Qt::CaseInsensitive))
        return QStringLiteral("http://");
    return {};
}

QString HTML_LinkText(const QString &scheme, const QString &value)
{
    if (scheme.isEmpty() || value.isEmpty())
        return value;
    return u"<a href=\"" % scheme % value % u"\">" % value % u"</a>";
}
