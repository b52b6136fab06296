#pragma once

#include "reports/writer/ReportLayout.h"

#include <QPageLayout>
#include <QPainter>

#include <optional>
#include <vector>

class Progress;
class QPagedPaintDevice;

/// Draws a report onto one page after another. The titles of a table are on every page of it.
class ReportPages final
{
public:
    /// Of the device, in dots per inch: so fine that letters keep their places when these are rounded, since
    /// whole numbers are quick to write and small.
    static constexpr int resolution = 1200;

    /// The smallest sheet on which the widest row, in pixels of the report, is legible.
    static QPageLayout SheetFor(int widestRow);

    /// Draws onto the sheets that the device has, scaled down if the widest row would not fit. Pictures are
    /// looked for in `folder`.
    ReportPages(QPagedPaintDevice &device, int widestRow, const QString &folder);

    bool Begin();
    void Add(const ReportBlock &block);
    bool End();
    /// Draws everything that is left in `report`, and tells `progress` how many of how many kilobytes have
    /// been drawn; without one, no event is served meanwhile. False if it was stopped: the device can still
    /// be told to throw the pages away.
    bool AddAll(ReportReader &report, Progress *progress);

private:
    /// A row of a table, or a text as a row of one cell without a border.
    struct Row {
        struct Cell {
            qreal left = 0;
            qreal width = 0;
            std::shared_ptr<const LaidText> text;
        };
        std::vector<Cell> cells{};
        qreal padding = 0;
        qreal height = 0;
        bool hasBorder = false;
    };

    Row TextRow(const ReportText &text);
    Row TableRow(const std::vector<ReportCell> &cells);
    void AddTableRow(const ReportBlock &block);
    void AddRow(const Row &row);
    void AddInPieces(const Row &row);
    void AddRule();
    void EndTable();
    void NewPage();
    void DrawTitles();
    void DrawRow(const Row &row, qreal from, qreal to);
    void DrawBorder(const Row &row, qreal height);
    void DrawFooter();
    qreal Room() const { return m_height - m_at; }
    static qreal Cut(const Row &row, qreal from, qreal to);

    QPagedPaintDevice &m_device;
    QPainter m_painter;
    QSizeF m_paper;
    ReportLayout m_layout;
    qreal m_height = 0; ///< of a page, above its number
    qreal m_at = 0;
    qreal m_top = 0; ///< where the page begins below the titles
    int m_page = 1;
    std::optional<Row> m_titles;
    bool m_areTitlesDue = false;
};
