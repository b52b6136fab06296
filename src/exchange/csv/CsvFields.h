#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// Walks a comma-separated text character by character and knows whether it is inside quotes. A double quote
/// opens and closes; inside quotes a doubled one does neither.
class CsvQuoteWalk final
{
public:
    explicit CsvQuoteWalk(QChar delimiter)
        : m_delimiter(delimiter)
    {
    }
    /// Continues over one line of the text.
    void Walk(QStringView line);
    /// Whether a quote has been opened and not closed yet.
    bool Inside() const { return m_inside; }
    int Delimiters() const { return m_delimiters; } ///< outside quotes
    /// Whether every quote so far opened at the start of a field or closed at the end of one.
    bool Orderly() const { return m_orderly; }

private:
    QChar m_delimiter;
    bool m_inside = false;
    bool m_atFieldStart = true;
    bool m_orderly = true;
    int m_delimiters = 0;
};

/// `text` in double quotes, with its own double quotes doubled.
QString CsvQuoteField(const QString &text);
/// The number of fields: 0 for an empty line, otherwise one more than the delimiters outside quotes.
int CsvCountFields(QStringView line, QChar delimiter);
/// The field with that number, from 1, trimmed and without its quotes; "" if there is none. Doubled quotes
/// inside stay doubled: CsvQuoteField is not undone.
QString CsvGetField(QStringView line, QChar delimiter, int index);
/// Removes the NUL characters from the text, which no column and no caption accepts; true if there were any.
bool RemoveNul(QString &text);
/// All fields of a line in one walk, each as from CsvGetField.
QStringList CsvGetFields(QStringView line, QChar delimiter);
