#include "exchange/csv/CsvReader.h"

#include "exchange/csv/CsvFields.h"

bool CsvReader::Open(const QString &fileName)
{
    m_headerFields = 0;
    return m_lines.Open(fileName);
}

void CsvReader::SetBytes(const QByteArray &bytes)
{
    m_headerFields = 0;
    m_lines.SetBytes(bytes);
}

bool CsvReader::Next(CsvLine &line)
{
    if (!m_lines.Next(line.text))
        return false;
    line.number = m_lines.Number();
    line.unclosedQuote = false;
    line.isOdd = m_lines.IsOdd();
    if (line.text.contains(u'"')) {
        CsvQuoteWalk walk(m_delimiter);
        walk.Walk(line.text);
        line.unclosedQuote = walk.Inside() && !JoinLines(line, walk);
    }
    if (m_headerFields == 0)
        m_headerFields = CsvCountFields(line.text, m_delimiter);
    return true;
}

bool CsvReader::JoinLines(CsvLine &line, const CsvQuoteWalk &begun)
{
    const TextLines::Place behindFirst = m_lines.Here();
    CsvQuoteWalk walk = begun;
    QString joined = line.text % m_lines.End();
    QString more;
    bool isOdd = line.isOdd;
    for (int lines = 1; lines < mostLinesOfRecord && walk.Orderly() && m_lines.Next(more); ++lines) {
        joined += more;
        isOdd = isOdd || m_lines.IsOdd();
        walk.Walk(more);
        if (walk.Inside()) {
            joined += m_lines.End();
            continue;
        }
        const bool fits = m_headerFields == 0 || walk.Delimiters() + 1 == m_headerFields;
        if (!fits || !walk.Orderly())
            break;
        line.text = joined;
        line.isOdd = isOdd;
        return true;
    }
    m_lines.GoTo(behindFirst);
    return false;
}

int CsvReader::CountRest()
{
    const TextLines::Place here = m_lines.Here();
    int count = 0;
    CsvLine line;
    while (Next(line))
        ++count;
    m_lines.GoTo(here);
    return count;
}
