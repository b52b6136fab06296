#include "reports/writer/ReportReader.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr QByteArrayView paragraphStart = "<p class=MsoNormal>";
constexpr QByteArrayView tableStart =
    "<table border=0 cellspacing=0 cellpadding=0 style='border-collapse:collapse;border:none;mso-";

QByteArrayView View(const QByteArray &bytes, qsizetype from, qsizetype to)
{
    return QByteArrayView(bytes).sliced(from, to - from);
}

bool IsEndTag(QByteArrayView line)
{
    return line.compare("</body>", Qt::CaseInsensitive) == 0 ||
           line.compare("</html>", Qt::CaseInsensitive) == 0;
}

/// Whether the writer put this line outside a table, so that a foreign text ends before it.
bool IsOwn(QByteArrayView line)
{
    return line == "<HR>" || line == "<br>" || line.startsWith(paragraphStart) ||
           line.startsWith(tableStart) || IsEndTag(line);
}

bool TakePrefix(QByteArrayView &text, QByteArrayView prefix)
{
    if (!text.startsWith(prefix))
        return false;
    text = text.sliced(prefix.size());
    return true;
}

/// Takes off the paragraph around a text. A paragraph of another kind stays part of the text.
ReportText Unwrapped(QByteArrayView html)
{
    constexpr QByteArrayView span = "<span style='font-size:";
    constexpr QByteArrayView spanEnd = "pt;mso-bidi-font-size:12.0pt'>";
    ReportText whole{html.trimmed()};
    ReportText text = whole;
    if (!TakePrefix(text.html, paragraphStart))
        return whole;
    text.isBold = TakePrefix(text.html, "<b>");
    const QByteArrayView end = text.isBold ? "</span></b></p>" : "</span></p>";
    if (!TakePrefix(text.html, span) || !text.html.endsWith(end))
        return whole;
    const qsizetype point = text.html.indexOf(spanEnd);
    if (point < 0)
        return whole;
    text.points = text.html.first(point).toDouble();
    text.html = text.html.sliced(point + spanEnd.size());
    text.html.chop(end.size());
    return text;
}

int NumberAfter(QByteArrayView line, QByteArrayView word)
{
    const qsizetype at = line.indexOf(word);
    int number = 0;
    for (qsizetype i = at + word.size(); at >= 0 && i < line.size() && line[i] >= '0' && line[i] <= '9'; ++i)
        number = number * 10 + (line[i] - '0');
    return number;
}

int AlignOf(QByteArrayView cell)
{
    constexpr QByteArrayView words[] = {"left", "center", "right", "justify", "char"};
    constexpr QByteArrayView align = " align = ";
    const qsizetype at = cell.indexOf(align);
    for (int code = 0; at >= 0 && code < 5; ++code) {
        if (cell.sliced(at + align.size()).startsWith(words[code]))
            return code;
    }
    return 0;
}
} // namespace

ReportReader::ReportReader(const QString &report)
    : m_file(report)
    , m_isOpen(m_file.open(QIODevice::ReadOnly))
{
    m_bytes = m_file.readAll();
    const qsizetype body = m_bytes.indexOf("\n<body");
    if (body < 0)
        return;
    m_at = body + 1;
    m_title = FindTitle();
    TakeLine();
}

/// A letterhead may contain anything, even lines like those of a report: what is between the body tag and
/// the title is not looked into.
qsizetype ReportReader::FindTitle() const
{
    const qsizetype from = m_bytes.indexOf("<title>") + 7;
    const qsizetype to = std::max(from, m_bytes.indexOf("</title>", from));
    const QByteArray title =
        "\n<p class=MsoNormal><b><span style='font-size:12.0pt;mso-bidi-font-size:12.0pt'>" +
        m_bytes.mid(from, to - from) + "</span></b></p>\n";
    return m_bytes.indexOf(title, m_at) + 1;
}

QByteArrayView ReportReader::PeekLine() const
{
    const qsizetype end = m_bytes.indexOf('\n', m_at);
    return View(m_bytes, m_at, end < 0 ? m_bytes.size() : end).trimmed();
}

QByteArrayView ReportReader::TakeLine()
{
    const qsizetype end = m_bytes.indexOf('\n', m_at);
    const qsizetype from = m_at;
    m_at = end < 0 ? m_bytes.size() : end + 1;
    return View(m_bytes, from, end < 0 ? m_at : end).trimmed();
}

bool ReportReader::Next(ReportBlock &block)
{
    block = {};
    if (m_at < m_title) {
        block.text.html = View(m_bytes, m_at, m_title);
        m_at = m_title;
        return true;
    }
    while (m_at < m_bytes.size()) {
        const QByteArrayView line = PeekLine();
        if (line.isEmpty() || IsEndTag(line) || line.startsWith(tableStart)) {
            m_isFirstRow = m_isFirstRow || line.startsWith(tableStart);
            m_inTable = m_inTable || m_isFirstRow;
            TakeLine();
            continue;
        }
        if (m_inTable && line == "<TR>") {
            TakeRow(block);
        } else if (m_inTable && line == "</TABLE>") {
            TakeLine();
            m_inTable = m_isFirstRow = false;
            block.kind = ReportBlock::Kind::TableEnd;
        } else if (line == "<HR>") {
            TakeLine();
            block.kind = ReportBlock::Kind::Rule;
        } else if (line.startsWith(paragraphStart)) {
            TakeParagraph(block);
        } else {
            TakeForeign(block);
        }
        return true;
    }
    return false;
}

/// A text may have several lines.
void ReportReader::TakeParagraph(ReportBlock &block)
{
    const qsizetype from = m_at;
    while (m_at < m_bytes.size() && !TakeLine().endsWith("</p>")) {
    }
    block.text = Unwrapped(View(m_bytes, from, m_at));
}

void ReportReader::TakeForeign(ReportBlock &block)
{
    const qsizetype from = m_at;
    if (TakeLine() == "<br>")
        return; // a line without text
    while (m_at < m_bytes.size() && !IsOwn(PeekLine()) && !(m_inTable && PeekLine() == "<TR>"))
        TakeLine();
    block.text.html = View(m_bytes, from, m_at);
}

void ReportReader::TakeRow(ReportBlock &block)
{
    block.kind = ReportBlock::Kind::Row;
    TakeLine();
    bool isCentred = false;
    while (m_at < m_bytes.size()) {
        const QByteArrayView line = TakeLine();
        if (line == "</TR>")
            break;
        if (!line.startsWith("<td"))
            continue;
        ReportCell cell;
        cell.width = NumberAfter(line, "width = ");
        cell.text = Unwrapped(TakeContent());
        cell.text.align = AlignOf(line);
        isCentred = isCentred || cell.text.align == 1;
        block.cells.push_back(cell);
    }
    block.isTitles = m_isFirstRow && isCentred;
    m_isFirstRow = false;
}

/// What is in a cell, up to the end tag that the writer put after it: a text may contain such a tag as well.
QByteArrayView ReportReader::TakeContent()
{
    const qsizetype from = m_at;
    while (m_at < m_bytes.size()) {
        const qsizetype to = m_at;
        if (TakeLine() != "</td>")
            continue;
        const QByteArrayView next = PeekLine();
        if (next.startsWith("<td") || next == "</TR>")
            return View(m_bytes, from, to);
    }
    return View(m_bytes, from, m_at);
}

int ReportReader::WidestRow() const
{
    int widest = 0;
    int width = 0;
    for (qsizetype from = m_title; from < m_bytes.size();) {
        const qsizetype end = m_bytes.indexOf('\n', from);
        const qsizetype to = end < 0 ? m_bytes.size() : end;
        const QByteArrayView line = View(m_bytes, from, to);
        from = to + 1;
        if (line.startsWith("<td"))
            width += NumberAfter(line, "width = ");
        else if (line.startsWith("</TR>"))
            widest = std::max(widest, std::exchange(width, 0));
    }
    return widest;
}
