#include "reports/writer/ReportParts.h"

#include "platform/sql/Windows1252.h"
#include "reports/writer/HTMLscript.h"

namespace
{
/// Enough rows that the titles before each part cost little, and few enough to show progress often.
constexpr int linesOfPart = 700;
/// What a text document adds around the text of a cell, left and right.
constexpr int cellPadding = 3;

const QString rowStart = QStringLiteral("<TR>");
const QString rowEnd = QStringLiteral("</TR>");
const QString tableEnd = QStringLiteral("</TABLE>");

QString TableStart()
{
    const QString border = HTMLBorder == 1 ? QStringLiteral("1") : QStringLiteral("0");
    return u"<table border=" % border % u" cellspacing=0 cellpadding=" % QString::number(cellPadding) %
           u" style='border-collapse:collapse;border-style:solid;border-color:black'>";
}

bool IsEndTag(const QString &line)
{
    return line.compare(u"</body>", Qt::CaseInsensitive) == 0 ||
           line.compare(u"</html>", Qt::CaseInsensitive) == 0;
}
} // namespace

ReportParts::ReportParts(const QString &report)
    : m_file(report)
{
    m_file.open(QIODevice::ReadOnly);
}

bool ReportParts::Next(Part &part)
{
    part = {{}, !m_titles.isEmpty(), m_inTable && !m_titles.isEmpty()};
    m_html = m_inTable ? TableStart() % m_titles : QString();
    m_lines = 0;
    bool isWhole = false;
    while (!isWhole && !m_file.atEnd()) {
        const QByteArray bytes = m_file.readLine();
        const QString line = FromWindows1252(bytes.constData(), bytes.size()).trimmed();
        if (!m_inBody)
            m_inBody = line.startsWith(u"<body");
        else if (!IsEndTag(line))
            Take(line);
        const bool mayPart = m_inTable ? line == rowEnd : line == tableEnd;
        isWhole = mayPart && m_lines >= linesOfPart;
    }
    if (m_lines == 0)
        return false;
    if (m_inTable)
        m_html += tableEnd;
    part.html = m_html;
    part.hasTitles = !m_titles.isEmpty();
    return true;
}

void ReportParts::Take(const QString &line)
{
    ++m_lines;
    if (line.startsWith(u"<table border=0 cellspacing=0 cellpadding=0 style='border-collapse")) {
        m_inTable = true;
        m_isFirstRow = true;
        m_titles.clear();
        m_html += TableStart();
        return;
    }
    if (m_inTable && line == rowStart) {
        m_inRow = true;
        m_row.clear();
        m_rowWidth = 0;
    }
    if (m_inRow && line.startsWith(u"<td"))
        TakeCell(line);
    else {
        m_html += line + u'\n';
        if (m_inRow)
            m_row += line + u'\n';
    }
    if (m_inRow && line == rowEnd) {
        m_inRow = false;
        m_widestRow = std::max(m_widestRow, m_rowWidth);
        if (m_isFirstRow && m_row.contains(u"align = center"))
            m_titles = m_row;
        m_isFirstRow = false;
    }
    if (line == tableEnd)
        m_inTable = false;
}

/// Adds the cell without its style, which the table's own border replaces.
void ReportParts::TakeCell(QString line)
{
    static const QString width = QStringLiteral("width = ");
    if (const qsizetype at = line.indexOf(width); at >= 0) {
        const QStringView digits = QStringView(line).mid(at + width.size());
        m_rowWidth += digits.left(digits.indexOf(u' ')).toInt() + 2 * cellPadding;
    }
    if (const qsizetype style = line.indexOf(u"style='"); style >= 0)
        line = line.left(style) + u'>';
    m_html += line + u'\n';
    m_row += line + u'\n';
}
