#include "reports/writer/HTMLscript.h"

#include "core/files/ErrorHandler.h"
#include "core/session/Session.h"
#include "platform/sql/Windows1252.h"
#include "reports/writer/ReportHeader.h"

#include <QDir>
#include <QSaveFile>

#include <array>
#include <cstring>
#include <memory>
#include <string>
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

/// The file being written, and a buffer of what is not in it yet: a report has hundreds of short lines for
/// each person, which are written together.
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

/// A line of the output, which its destructor ends.
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
};

/// What comes before the text of a paragraph; built once for each weight and size.
std::string_view ParagraphStart(bool isBold, int size)
{
    static constexpr std::array points = {"8.0", "7.0", "8.0", "9.0", "10.0", "12.0", "14.0"};
    static const auto starts = [] {
        std::array<std::array<std::string, points.size()>, 2> built;
        for (size_t weight = 0; weight < built.size(); ++weight) {
            for (size_t i = 0; i < points.size(); ++i)
                built[weight][i] = std::string("<p class=MsoNormal>") + (weight == 1 ? "<b>" : "") +
                                   "<span style='font-size:" + points[i] + "pt;mso-bidi-font-size:12.0pt'>";
        }
        return built;
    }();
    return starts[isBold ? 1 : 0][size >= 1 && size <= 6 ? static_cast<size_t>(size) : 0];
}

using Words = std::array<std::string_view, 5>;

/// A code without a word means the first word.
size_t WordOf(int code)
{
    return code >= 0 && code <= 4 ? static_cast<size_t>(code) : 0;
}

std::string BuiltCellStart(int colSpan, size_t hAlign, size_t vAlign, int width)
{
    static constexpr Words across = {"left", "center", "right", "justify", "char"};
    static constexpr Words down = {"top", "middle", "bottom", "baseline", "top"};
    const std::string border = HTMLBorder == 1 ? "solid windowtext .5pt" : "none";
    std::string cell = "<td";
    if (width >= 1)
        cell += " width = " + std::to_string(width);
    cell.append(" align = ").append(across[hAlign]).append("  valign = ").append(down[vAlign]).append(" ");
    // No blank after the span: reports have always been written this way.
    if (colSpan >= 2)
        cell += " colspan=" + std::to_string(colSpan);
    return cell + "style='border:" + border + ";border-left:none;mso-border-left-alt:" + border +
           ";padding:2pt 2pt 2pt 2pt'>";
}

/// A report has few kinds of cells and thousands of each, so the start of a kind is cached until another
/// needs its place.
// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): in the order of `HTML_Cell`.
std::string_view CellStart(int colSpan, int hAlign, int vAlign, int width)
{
    struct Kept {
        std::array<int, 5> kind;
        std::string start;
    };
    static std::array<Kept, 64> places;
    const size_t across = WordOf(hAlign);
    const size_t down = WordOf(vAlign);
    const std::array<int, 5> kind = {colSpan, static_cast<int>(across), static_cast<int>(down), width,
                                     HTMLBorder};
    Kept &kept = places[(static_cast<size_t>(width) / 10 + across * 7 + down) % places.size()];
    if (kept.start.empty() || kept.kind != kind)
        kept = {kind, BuiltCellStart(colSpan, across, down, width)};
    return kept.start;
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
        Line() << ParagraphStart(mode == 1, size) << text << (mode == 1 ? "</span></b></p>" : "</span></p>");
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

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the signature that every report knows.
void HTML_Cell(int colSpan, int mode, int hAlign, int vAlign, int size, int width, const QString &text)
{
    Line() << CellStart(colSpan, hAlign, vAlign, width);
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
