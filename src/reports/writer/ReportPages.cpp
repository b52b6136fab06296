#include "reports/writer/ReportPages.h"

#include "core/session/Progress.h"
#include "reports/writer/HTMLscript.h"

#include <QPagedPaintDevice>

#include <algorithm>
#include <cmath>

namespace
{
constexpr qsizetype kilobyte = 1024;
/// Often enough for a progress bar, and so seldom that it costs nothing.
constexpr qsizetype bytesBetweenSteps = 64 * kilobyte;
constexpr int dotsPerInch = 96; ///< of the widths in a report
constexpr qreal marginMillimetres = 12;
constexpr qreal paddingPixels = 3; ///< between the text of a cell and its edges
constexpr qreal footerHeight = 24;
constexpr qreal footerPoints = 7;
/// How far a table may be scaled down from its size in a browser before it gets a larger sheet.
constexpr qreal leastScale = 0.7;

struct Sheet {
    QPageSize::PageSizeId size;
    QPageLayout::Orientation orientation;
};
constexpr Sheet sheets[] = {{QPageSize::A4, QPageLayout::Portrait},  {QPageSize::A4, QPageLayout::Landscape},
                            {QPageSize::A3, QPageLayout::Landscape}, {QPageSize::A2, QPageLayout::Landscape},
                            {QPageSize::A1, QPageLayout::Landscape}, {QPageSize::A0, QPageLayout::Landscape}};

/// The length of a pixel of the report, so that the widest row fits.
qreal UnitFor(qreal paper, int widestRow)
{
    return std::min<qreal>(static_cast<qreal>(ReportPages::resolution) / dotsPerInch,
                           paper / std::max(1, widestRow));
}
} // namespace

QPageLayout ReportPages::SheetFor(int widestRow)
{
    QPageLayout layout;
    for (const Sheet &sheet : sheets) {
        layout =
            QPageLayout(QPageSize(sheet.size), sheet.orientation,
                        QMarginsF(marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres),
                        QPageLayout::Millimeter);
        if (layout.paintRectPixels(dotsPerInch).width() >= widestRow * leastScale)
            break;
    }
    return layout;
}

ReportPages::ReportPages(QPagedPaintDevice &device, int widestRow, const QString &folder)
    : m_device(device)
    , m_paper(device.pageLayout().paintRectPixels(resolution).size())
    , m_layout(UnitFor(m_paper.width(), widestRow), folder)
    , m_height(m_paper.height() - footerHeight * resolution / dotsPerInch)
{
}

bool ReportPages::Begin()
{
    if (!m_painter.begin(&m_device))
        return false;
    DrawFooter();
    return true;
}

bool ReportPages::End()
{
    EndTable();
    return m_painter.end();
}

bool ReportPages::AddAll(ReportReader &report, Progress *progress)
{
    ReportBlock block;
    qsizetype next = 0;
    while (report.Next(block)) {
        Add(block);
        if (!progress || (report.Read() < next && report.Read() < report.Size()))
            continue;
        next = report.Read() + bytesBetweenSteps;
        if (!(*progress)(static_cast<int>(report.Read() / kilobyte),
                         static_cast<int>(report.Size() / kilobyte)))
            return false;
    }
    return true;
}

void ReportPages::Add(const ReportBlock &block)
{
    switch (block.kind) {
    case ReportBlock::Kind::Text:
        AddRow(TextRow(block.text));
        break;
    case ReportBlock::Kind::Rule:
        AddRule();
        break;
    case ReportBlock::Kind::Row:
        AddTableRow(block);
        break;
    case ReportBlock::Kind::TableEnd:
        EndTable();
        break;
    }
}

ReportPages::Row ReportPages::TextRow(const ReportText &text)
{
    Row row;
    row.cells = {{0, m_paper.width(), m_layout.Lay(text, m_paper.width())}};
    row.height = row.cells[0].text->Height();
    return row;
}

ReportPages::Row ReportPages::TableRow(const std::vector<ReportCell> &cells)
{
    Row row;
    row.padding = std::round(paddingPixels * m_layout.Unit());
    row.hasBorder = HTMLBorder == 1;
    qreal left = 0;
    for (const ReportCell &cell : cells) {
        const qreal least = 2 * row.padding + 1;
        const qreal told = cell.width > 0 ? cell.width * m_layout.Unit() : m_paper.width() - left;
        const qreal width = std::max(least, std::floor(told));
        row.cells.push_back({left, width, m_layout.Lay(cell.text, width - 2 * row.padding)});
        row.height = std::max(row.height, row.cells.back().text->Height() + 2 * row.padding);
        left += width;
    }
    return row;
}

void ReportPages::AddTableRow(const ReportBlock &block)
{
    Row row = TableRow(block.cells);
    // Titles that would take most of each page are there once.
    if (block.isTitles && row.height < m_height / 2) {
        m_titles = std::move(row);
        m_areTitlesDue = true;
    } else {
        AddRow(row);
    }
}

void ReportPages::AddRow(const Row &row)
{
    const qreal titles = m_titles ? m_titles->height : 0;
    // Titles must not be alone at the foot of a page.
    const qreal needed = row.height + (m_areTitlesDue ? titles : 0);
    const bool isCut = row.height > m_height - titles && Room() > m_height / 4;
    if (needed > Room() && m_at > m_top && !isCut)
        NewPage();
    DrawTitles();
    if (row.height > Room()) {
        AddInPieces(row);
    } else {
        DrawRow(row, 0, row.height);
        m_at += row.height;
    }
}

/// A row that is taller than a page goes on over the next ones.
void ReportPages::AddInPieces(const Row &row)
{
    qreal from = 0;
    while (from < row.height) {
        const qreal to = Cut(row, from, from + Room());
        DrawRow(row, from, to);
        m_at += to - from;
        from = to;
        if (from < row.height)
            NewPage();
    }
}

/// The last position up to `to` at which a row can be cut without cutting a line of text; `to` if there is
/// none after `from`.
qreal ReportPages::Cut(const Row &row, qreal from, qreal to)
{
    if (to >= row.height)
        return row.height;
    std::vector<LaidText::Line> lines;
    for (const Row::Cell &cell : row.cells) {
        const auto ofCell = cell.text->Lines();
        lines.insert(lines.end(), ofCell.begin(), ofCell.end());
    }
    std::sort(lines.begin(), lines.end(),
              [](const auto &one, const auto &other) { return one.bottom > other.bottom; });
    qreal cut = to;
    for (const LaidText::Line &line : lines) {
        if (line.bottom + row.padding > cut && line.top + row.padding < cut)
            cut = line.top + row.padding;
    }
    return cut > from ? cut : to;
}

void ReportPages::AddRule()
{
    const qreal height = std::round(14 * m_layout.Unit());
    if (height > Room())
        NewPage();
    m_painter.fillRect(QRectF(0, m_at + height / 2, m_paper.width(), m_layout.Unit()), Qt::black);
    m_at += height;
}

void ReportPages::EndTable()
{
    if (m_areTitlesDue && m_titles->height > Room())
        NewPage();
    DrawTitles();
    m_titles.reset();
}

void ReportPages::NewPage()
{
    m_device.newPage();
    ++m_page;
    m_at = 0;
    DrawFooter();
    m_areTitlesDue = m_titles.has_value();
    DrawTitles();
    m_top = m_at;
}

void ReportPages::DrawTitles()
{
    if (!m_areTitlesDue)
        return;
    m_areTitlesDue = false;
    DrawRow(*m_titles, 0, m_titles->height);
    m_at += m_titles->height;
}

/// Draws what is between two positions of a row.
void ReportPages::DrawRow(const Row &row, qreal from, qreal to)
{
    for (const Row::Cell &cell : row.cells) {
        const QPointF at(cell.left + row.padding, m_at - from + row.padding);
        cell.text->Draw(m_painter, at, from - row.padding, to - row.padding);
    }
    if (row.hasBorder)
        DrawBorder(row, to - from);
}

void ReportPages::DrawBorder(const Row &row, qreal height)
{
    QList<QLineF> lines;
    const qreal right = row.cells.empty() ? 0 : row.cells.back().left + row.cells.back().width;
    lines.append({0, m_at, right, m_at});
    lines.append({0, m_at + height, right, m_at + height});
    for (const Row::Cell &cell : row.cells)
        lines.append({cell.left, m_at, cell.left, m_at + height});
    lines.append({right, m_at, right, m_at + height});
    m_painter.setPen(QPen(Qt::black, m_layout.Unit()));
    m_painter.drawLines(lines);
    m_painter.setPen(Qt::black);
}

void ReportPages::DrawFooter()
{
    QFont font = m_painter.font();
    font.setPointSizeF(footerPoints);
    m_painter.setFont(font);
    m_painter.drawText(QRectF(0, m_height, m_paper.width(), m_paper.height() - m_height),
                       Qt::AlignHCenter | Qt::AlignBottom, u"Page " % QString::number(m_page));
}
