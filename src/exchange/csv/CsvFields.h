#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// Walks a comma-separated text character by character and knows whether it stands inside quotes. A
/// double quote opens and closes; inside quotes a doubled one does neither.
class CsvQuoteWalk final
{
public:
    explicit CsvQuoteWalk(QChar delimiter)
        : m_delimiter(delimiter)
    {
    }
    /// Goes on over one line of the text.
    void Walk(QStringView line);
    /// A quote was opened and not closed so far.
    bool Inside() const { return m_inside; }
    int Delimiters() const { return m_delimiters; } ///< outside quotes
    /// Every quote so far opened at the start of a field or closed at the end of one.
    bool Orderly() const { return m_orderly; }

private:
    QChar m_delimiter;
    bool m_inside = false;
    bool m_atFieldStart = true;
    bool m_orderly = true;
    int m_delimiters = 0;
};

/// `text` between double quotes, its own double quotes doubled.
QString CsvQuoteField(const QString &text);
/// The number of fields: 0 for an empty line, otherwise one more than the delimiters outside quotes.
int CsvCountFields(QStringView line, QChar delimiter);
/// The field of that number, from 1, trimmed and without its quotes; "" where there is none. Doubled quotes
/// inside stay doubled: what CsvQuoteField did is not undone.
QString CsvGetField(QStringView line, QChar delimiter, int index);
/// Takes the NUL characters out of the text, which no column and no caption takes; true if there were any.
bool RemoveNul(QString &text);
/// All fields of a line, each as CsvGetField gives it, in one walk.
QStringList CsvGetFields(QStringView line, QChar delimiter);
