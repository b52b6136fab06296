#include "exchange/CsvFields.h"

namespace
{
constexpr QChar quote = u'"';

/// The position after the character at `at`; a doubled quote inside quotes counts as one. Keeps `inside`.
qsizetype Step(QStringView line, qsizetype at, bool &inside)
{
    if (line.at(at) != quote)
        return at + 1;
    if (inside && at + 1 < line.size() && line.at(at + 1) == quote)
        return at + 2;
    inside = !inside;
    return at + 1;
}
} // namespace

void CsvQuoteWalk::Walk(QStringView line)
{
    for (qsizetype at = 0; at < line.size();) {
        const QChar c = line.at(at);
        const bool wasInside = m_inside;
        at = Step(line, at, m_inside);
        if (m_inside && !wasInside) {
            m_orderly = m_orderly && m_atFieldStart;
        } else if (wasInside && !m_inside) {
            const QStringView rest = line.mid(at).trimmed();
            m_orderly = m_orderly && (rest.isEmpty() || rest.front() == m_delimiter);
        } else if (!m_inside && c == m_delimiter) {
            ++m_delimiters;
            m_atFieldStart = true;
            continue;
        }
        m_atFieldStart = m_atFieldStart && c.isSpace();
    }
}

QString CsvQuoteField(const QString &text)
{
    QString doubled = text;
    doubled.replace(quote, QLatin1String("\"\""));
    return quote % doubled % quote;
}

int CsvCountFields(QStringView line, QChar delimiter)
{
    if (line.isEmpty())
        return 0;
    CsvQuoteWalk walk(delimiter);
    walk.Walk(line);
    return walk.Delimiters() + 1;
}

QString CsvGetField(QStringView line, QChar delimiter, int index)
{
    if (index < 1)
        return {};
    bool inside = false;
    int field = 1;
    qsizetype start = 0;
    qsizetype at = 0;
    while (at < line.size()) {
        if (!inside && line.at(at) == delimiter) {
            if (field == index)
                break;
            ++field;
            start = at + 1;
        }
        at = Step(line, at, inside);
    }
    if (field < index)
        return {};
    QStringView piece = line.mid(start, at - start).trimmed();
    if (piece.startsWith(quote))
        piece = piece.mid(1);
    if (piece.endsWith(quote))
        piece.chop(1);
    return piece.toString();
}
