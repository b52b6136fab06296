#include "reports/HTMLscript.h"

#include "core/ErrorHandler.h"
#include "core/Session.h"
#include "platform/Windows1252.h"
#include "reports/ReportHeader.h"

#include <QDir>
#include <QSaveFile>

#include <array>
#include <charconv>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

int HTMLBorder = 0;

namespace
{
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

/// The file that is written, and what is not in it yet: a report has hundreds of short lines for each person,
/// which go out together.
class Output final
{
public:
    bool Open(const QString &file)
    {
        m_used = 0;
        m_buffer.resize(writtenAtOnce);
        m_file = std::make_unique<QSaveFile>(file);
        return m_file->open(QIODevice::WriteOnly);
    }
    /// Null where no report is being written.
    QSaveFile *File() const { return m_file.get(); }
    void Close()
    {
        m_used = 0;
        m_file.reset();
    }

    void Put(const char *bytes, size_t size)
    {
        std::memcpy(Room(size), bytes, size);
        m_used += size;
    }
    void Put(QStringView text)
    {
        char *room = Room(static_cast<size_t>(text.size() * mostBytesInWindows1252));
        m_used += static_cast<size_t>(WriteWindows1252(room, text) - room);
    }
    void Flush()
    {
        if (m_file && m_file->isOpen())
            m_file->write(m_buffer.data(), static_cast<qint64>(m_used));
        m_used = 0;
    }

private:
    char *Room(size_t size)
    {
        if (m_used + size > writtenAtOnce)
            Flush();
        if (m_used + size > m_buffer.size())
            m_buffer.resize(m_used + size);
        return m_buffer.data() + m_used;
    }

    static constexpr size_t writtenAtOnce = 1 << 16;
    std::unique_ptr<QSaveFile> m_file;
    std::vector<char> m_buffer;
    size_t m_used = 0; ///< of the buffer
};

Output g_output;

/// A line of the output, ended when it goes.
class Line final
{
public:
    Line() = default;
    ~Line() { g_output.Put("\n", 1); }
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;

    Line &operator<<(std::string_view ascii)
    {
        g_output.Put(ascii.data(), ascii.size());
        return *this;
    }
    Line &operator<<(QStringView text)
    {
        g_output.Put(text);
        return *this;
    }
    Line &operator<<(int number)
    {
        std::array<char, 12> digits{};
        const char *end = std::to_chars(digits.begin(), digits.end(), number).ptr;
        g_output.Put(digits.data(), static_cast<size_t>(end - digits.data()));
        return *this;
    }
};

std::string_view SizePoints(int size)
{
    static constexpr std::array<std::string_view, 7> points = {"8.0",  "7.0",  "8.0", "9.0",
                                                               "10.0", "12.0", "14.0"};
    return points[size >= 1 && size <= 6 ? static_cast<size_t>(size) : 0];
}

using Words = std::array<std::string_view, 5>;

std::string_view Word(const Words &words, int code)
{
    return words[code >= 0 && code <= 4 ? static_cast<size_t>(code) : 0];
}

void WriteCellStart(int colSpan, int hAlign, int vAlign, int width)
{
    static constexpr Words across = {"left", "center", "right", "justify", "char"};
    static constexpr Words down = {"top", "middle", "bottom", "baseline", "top"};
    const std::string_view border = HTMLBorder == 1 ? "solid windowtext .5pt" : "none";
    Line cell;
    cell << "<td";
    if (width >= 1)
        cell << " width = " << width;
    cell << " align = " << Word(across, hAlign) << "  valign = " << Word(down, vAlign) << " ";
    // No blank behind the span: every report so far has it so.
    if (colSpan >= 2)
        cell << " colspan=" << colSpan;
    cell << "style='border:" << border << ";border-left:none;mso-border-left-alt:" << border
         << ";padding:2pt 2pt 2pt 2pt'>";
}
} // namespace

QString HTML_OutputPath()
{
    return gDocDir % u"/temp.htm";
}

bool HTML_Start(const QString &title)
{
    const bool isOpen = g_output.Open(HTML_OutputPath());
    Line() << "<html>";
    Line() << "<head>";
    Line() << "<meta http-equiv=Content-Type content=\"Text / html\"; Charset = windows - 1252; >";
    Line() << "<title>" << title << "</title>";
    Line() << headLines;
    const ReportHeader header = ReadReportHeader(gHeaderFile);
    g_headerFault = header.fault;
    g_output.Put(header.bytes.constData(), static_cast<size_t>(header.bytes.size()));
    HTML_Text(Html::bold, Html::titleSize, title);
    return isOpen;
}

QString HTML_HeaderFault()
{
    return g_headerFault;
}

bool HTML_Finish(HtmlEnd end, QString *fault)
{
    QSaveFile *output = g_output.File();
    if (!output)
        return false;
    Line() << (end == HtmlEnd::Small ? "</body>" : "</BODY>");
    Line() << (end == HtmlEnd::Small ? "</html>" : "</HTML>");
    g_output.Flush();
    const bool written = output->isOpen() && output->flush() && output->commit();
    if (!written) {
        const QString file = QDir::toNativeSeparators(HTML_OutputPath());
        const QString why = file % u": " % output->errorString();
        SetCurrentError(
            {static_cast<int>(output->error()), file, u"The report could not be written to " % why, {}});
        if (fault)
            *fault = why;
    }
    g_output.Close();
    return written;
}

void HTML_Discard()
{
    g_output.Close();
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
    static const QString blank = QStringLiteral("&nbsp;");
    HTML_RowStart();
    HTML_Cell(0, 1, 0, 0, 0, 100, blank);
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
