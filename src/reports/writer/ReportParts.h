#pragma once

#include <QFile>
#include <QString>

/// Reads a report in parts, each of which is a page of its own for a text document: thousands of people in
/// one document would take minutes and gigabytes. A table that continues in the next part is closed and
/// opened again there, with its titles.
class ReportParts final
{
public:
    explicit ReportParts(const QString &report);

    bool IsOpen() const { return m_file.isOpen(); }
    QString Fault() const { return m_file.errorString(); }
    qint64 Size() const { return m_file.size(); }
    qint64 Read() const { return m_file.pos(); }

    struct Part {
        QString html;
        bool hasTitles = false; ///< its first table begins with a row of titles
        bool goesOn = false;    ///< that row is already in the part before it
    };
    /// False after the last part.
    bool Next(Part &part);
    /// The widths of the cells of the widest row so far, in pixels.
    int WidestRow() const { return m_widestRow; }

private:
    void Take(const QString &line);
    void TakeCell(QString line);

    QFile m_file;
    QString m_html;
    QString m_row;
    QString m_titles;
    int m_lines = 0;
    int m_rowWidth = 0;
    int m_widestRow = 0;
    bool m_inBody = false;
    bool m_inTable = false;
    bool m_inRow = false;
    bool m_isFirstRow = false;
};
