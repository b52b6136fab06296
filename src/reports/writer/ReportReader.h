#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

#include <optional>
#include <vector>

/// A text of a report, without the paragraph that the writer put around it. The bytes are those of the
/// report and live as long as its reader.
struct ReportText {
    QByteArrayView html;
    qreal points = 9;
    bool isBold = false;
    int align = 0; ///< code 0 to 4, as for HTML_Cell
};

struct ReportCell {
    ReportText text;
    int width = 0; ///< in pixels; 0 = not told
};

/// What follows next in a report.
struct ReportBlock {
    enum class Kind { Text, Rule, Row, TableEnd };
    Kind kind = Kind::Text;
    ReportText text;
    std::vector<ReportCell> cells{};
    bool isTitles = false; ///< the row has the titles of its table
};

/// Reads a written report back as what it was made of. Anything else in it, such as a letterhead, is a text.
class ReportReader final
{
public:
    explicit ReportReader(const QString &report);

    bool IsOpen() const { return m_isOpen; }
    QString Fault() const { return m_file.errorString(); }
    qsizetype Size() const { return m_bytes.size(); }
    qsizetype Read() const { return m_at; }

    /// False after the last block.
    bool Next(ReportBlock &block);
    /// The widths of the cells of the widest row, in pixels.
    int WidestRow() const;

private:
    qsizetype FindTitle() const;
    QByteArrayView PeekLine() const;
    QByteArrayView TakeLine();
    void TakeParagraph(ReportBlock &block);
    void TakeForeign(ReportBlock &block);
    void TakeRow(ReportBlock &block);
    QByteArrayView TakeContent();

    QFile m_file;
    QByteArray m_bytes;
    bool m_isOpen = false;
    qsizetype m_at = 0;
    qsizetype m_title = 0; ///< where the report's own title is, after the letterhead
    bool m_inTable = false;
    bool m_isFirstRow = false;
};
