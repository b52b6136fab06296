#pragma once

#include "exchange/csv/TextLines.h"

#include <QString>

/// One record of a comma-separated file.
struct CsvLine {
    QString text;               ///< without its line end
    int number = 0;             ///< of its first line in the file, from 1
    bool unclosedQuote = false; ///< it has a quote that is not closed
    bool isOdd = false;         ///< it is not in the encoding of most of the file
};

/// A record with more lines than this is assumed to have a quote that was never closed.
constexpr int mostLinesOfRecord = 500;

/// Reads the records of a comma-separated file, the header line first. A line end inside quotes belongs to
/// the field if the quotes close in good order and the record then has as many fields as the header. Any
/// other open quote ends with its line, so that it cannot swallow the lines after it.
class CsvReader final
{
public:
    explicit CsvReader(QChar delimiter = u',')
        : m_delimiter(delimiter)
    {
    }
    /// False if the file cannot be read; Problem() then says why, as a sentence.
    bool Open(const QString &fileName);
    void SetBytes(const QByteArray &bytes);
    const QString &Problem() const { return m_lines.Problem(); }

    bool Next(CsvLine &line);
    /// Counts the records from here to the end, without moving.
    int CountRest();
    QString EncodingName() const { return m_lines.EncodingName(); }
    const FileStamp &Stamp() const { return m_lines.Stamp(); }

private:
    bool JoinLines(CsvLine &line, const class CsvQuoteWalk &begun);

    TextLines m_lines;
    QChar m_delimiter;
    int m_headerFields = 0; ///< 0 until the header has been read
};
