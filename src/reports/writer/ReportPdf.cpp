#include "reports/writer/ReportPdf.h"

#include "core/session/Progress.h"
#include "reports/writer/ReportParts.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>

#include <algorithm>

namespace
{
constexpr int dotsPerInch = 96; ///< of the widths in a report
constexpr qreal marginMillimetres = 12;
constexpr qreal footerHeight = 24;
/// How far a table may be scaled down from its size in a browser before it gets a larger sheet.
constexpr qreal leastScale = 0.7;

struct Sheet {
    QPageSize::PageSizeId size;
    QPageLayout::Orientation orientation;
};
constexpr Sheet sheets[] = {{QPageSize::A4, QPageLayout::Portrait},  {QPageSize::A4, QPageLayout::Landscape},
                            {QPageSize::A3, QPageLayout::Landscape}, {QPageSize::A2, QPageLayout::Landscape},
                            {QPageSize::A1, QPageLayout::Landscape}, {QPageSize::A0, QPageLayout::Landscape}};

/// The smallest sheet on which a row of that width is legible.
QPageLayout LayoutFor(int width)
{
    QPageLayout layout;
    for (const Sheet &sheet : sheets) {
        layout =
            QPageLayout(QPageSize(sheet.size), sheet.orientation,
                        QMarginsF(marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres),
                        QPageLayout::Millimeter);
        if (layout.paintRectPixels(dotsPerInch).width() >= width * leastScale)
            break;
    }
    return layout;
}

/// A part of the report, laid out on an endless page.
class LaidOut final
{
public:
    LaidOut(const ReportParts::Part &part, const QString &folder, QPdfWriter &writer, qreal width)
    {
        QFont font(QStringLiteral("Verdana"), 9);
        font.setHintingPreference(QFont::PreferNoHinting);
        m_document.setDefaultFont(font);
        m_document.setDocumentMargin(0);
        m_document.setUndoRedoEnabled(false);
        m_document.setDefaultStyleSheet(QStringLiteral("p.MsoNormal { margin: 0px; }"));
        // Long addresses must wrap, or the columns of two parts would differ.
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        m_document.setDefaultTextOption(option);
        m_document.setBaseUrl(QUrl::fromLocalFile(folder + u'/'));
        m_document.documentLayout()->setPaintDevice(&writer);
        m_document.setHtml(part.html);
        m_document.setTextWidth(width);
        FindCuts(part);
    }

    qreal Begin() const { return m_begin; }
    qreal End() const { return m_document.size().height(); }
    /// The titles of the table, to be repeated at the top of a page.
    qreal TitlesTop() const { return m_titlesTop; }
    qreal TitlesBottom() const { return m_titlesBottom; }
    /// The last position after `from` and not after `to` where a page may end; `from` if there is none.
    qreal CutBetween(qreal from, qreal to) const
    {
        const auto next = std::upper_bound(m_cuts.begin(), m_cuts.end(), to);
        return next == m_cuts.begin() ? from : std::max(from, *std::prev(next));
    }
    void Draw(QPainter &painter, qreal from, qreal to, qreal at) const
    {
        painter.save();
        painter.translate(0, at - from);
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = QPalette(Qt::black, Qt::white);
        context.clip = QRectF(0, from, m_document.size().width(), to - from);
        painter.setClipRect(context.clip);
        m_document.documentLayout()->draw(&painter, context);
        painter.restore();
    }

private:
    void FindCuts(const ReportParts::Part &part)
    {
        const QAbstractTextDocumentLayout *layout = m_document.documentLayout();
        QTextFrame *root = m_document.rootFrame();
        for (auto it = root->begin(); !it.atEnd(); ++it) {
            if (auto *table = qobject_cast<QTextTable *>(it.currentFrame()))
                CutRows(*table, *layout, part);
            else if (it.currentBlock().isValid())
                m_cuts.push_back(layout->blockBoundingRect(it.currentBlock()).top());
        }
        m_cuts.push_back(End());
        std::sort(m_cuts.begin(), m_cuts.end());
    }

    void CutRows(const QTextTable &table, const QAbstractTextDocumentLayout &layout,
                 const ReportParts::Part &part)
    {
        std::vector<qreal> tops;
        for (int row = 0; row < table.rows(); ++row) {
            qreal top = layout.frameBoundingRect(const_cast<QTextTable *>(&table)).bottom();
            for (int column = 0; column < table.columns(); ++column) {
                const QTextBlock first = table.cellAt(row, column).firstCursorPosition().block();
                top = std::min(top, layout.blockBoundingRect(first).top());
            }
            tops.push_back(top - table.format().cellPadding() - table.format().border());
        }
        if (part.hasTitles && m_titlesBottom == 0 && tops.size() > 1) {
            m_titlesTop = tops[0];
            m_titlesBottom = tops[1];
            m_begin = part.goesOn ? m_titlesBottom : 0;
            // Titles must not be alone at the foot of a page.
            tops.erase(tops.begin() + 1);
        }
        m_cuts.insert(m_cuts.end(), tops.begin(), tops.end());
    }

    QTextDocument m_document;
    std::vector<qreal> m_cuts;
    qreal m_begin = 0;
    qreal m_titlesTop = 0;
    qreal m_titlesBottom = 0;
};

/// Fills one page after another.
class Pages final
{
public:
    Pages(QPdfWriter &writer, int widestRow)
        : m_writer(writer)
    {
        const QPageLayout layout = LayoutFor(widestRow);
        writer.setPageLayout(layout);
        writer.setResolution(dotsPerInch);
        const QSize paper = layout.paintRectPixels(dotsPerInch).size();
        m_scale = std::min(1.0, static_cast<qreal>(paper.width()) / std::max(1, widestRow));
        m_width = paper.width() / m_scale;
        m_height = (paper.height() - footerHeight) / m_scale;
    }

    qreal Width() const { return m_width; }
    bool Begin()
    {
        if (!m_painter.begin(&m_writer))
            return false;
        m_painter.scale(m_scale, m_scale);
        DrawFooter();
        return true;
    }
    bool End() { return m_painter.end(); }

    void Add(const LaidOut &part)
    {
        qreal from = part.Begin();
        qreal top = 0; // of the page, below the repeated titles
        while (from < part.End()) {
            qreal to = part.CutBetween(from, from + m_height - m_at);
            if (to <= from && m_at > top) {
                top = NewPage(part);
                continue;
            }
            if (to <= from)
                to = std::min(part.End(), from + m_height - m_at);
            part.Draw(m_painter, from, to, m_at);
            m_at += to - from;
            from = to;
            if (from < part.End())
                top = NewPage(part);
        }
    }

private:
    /// Starts a page, and returns where it begins below the titles.
    qreal NewPage(const LaidOut &part)
    {
        m_writer.newPage();
        ++m_page;
        DrawFooter();
        m_at = part.TitlesBottom() - part.TitlesTop();
        if (m_at > m_height / 2)
            m_at = 0;
        else if (m_at > 0)
            part.Draw(m_painter, part.TitlesTop(), part.TitlesBottom(), 0);
        return m_at;
    }

    void DrawFooter()
    {
        m_painter.save();
        QFont font = m_painter.font();
        font.setPointSizeF(7 / m_scale);
        m_painter.setFont(font);
        m_painter.drawText(QRectF(0, m_height, m_width, footerHeight / m_scale),
                           Qt::AlignHCenter | Qt::AlignBottom, u"Page " % QString::number(m_page));
        m_painter.restore();
    }

    QPdfWriter &m_writer;
    QPainter m_painter;
    qreal m_scale = 1;
    qreal m_width = 0;
    qreal m_height = 0;
    qreal m_at = 0;
    int m_page = 1;
};
} // namespace

bool SaveReportAsPdf(const QString &report, const QString &pdf, Progress &progress, QString &fault)
{
    constexpr qint64 kilobyte = 1024;
    fault.clear();
    ReportParts parts(report);
    if (!parts.IsOpen()) {
        fault = QDir::toNativeSeparators(report) % u": " % parts.Fault();
        return false;
    }
    QSaveFile file(pdf);
    ReportParts::Part part;
    parts.Next(part);
    bool written = file.open(QIODevice::WriteOnly);
    if (written) {
        QPdfWriter writer(&file);
        Pages pages(writer, parts.WidestRow());
        written = pages.Begin();
        bool goesOn = written;
        while (goesOn) {
            pages.Add(LaidOut(part, QFileInfo(report).path(), writer, pages.Width()));
            if (!progress(static_cast<int>(parts.Read() / kilobyte),
                          static_cast<int>(parts.Size() / kilobyte)))
                return false;
            goesOn = parts.Next(part);
        }
        written = pages.End() && written;
    }
    if (!written || !file.flush() || !file.commit())
        fault = QDir::toNativeSeparators(pdf) % u": " % file.errorString();
    return fault.isEmpty();
}
