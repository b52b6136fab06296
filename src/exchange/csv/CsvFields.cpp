#include "exchange/csv/CsvFields.h"

namespace
{
constexpr QChar quote = u'"';

/// The position after the character at `at`; a doubled quote inside quotes counts as one. Updates `inside`.
qsizetype Step(QStringView line, qsizetype at, bool &inside)
{
    if (line.at(at) != quote)
        return at + 1;
    if (inside && at + 1 < line.size() && line.at(at + 1) == quote)
        return at + 2;
    inside = !inside;
    return at + 1;
}
/// Where the field that begins at `start` ends: at a delimiter outside quotes or at the end of the line.
qsizetype FieldEnd(QStringView line, QChar delimiter, qsizetype start)
{
    bool inside = false;
    qsizetype at = start;
    while (at < line.size() && (inside || line.at(at) != delimiter))
        at = Step(line, at, inside);
    return at;
}

QString TextOfPiece(QStringView piece)
{
    piece = piece.trimmed();
    if (piece.startsWith(quote))
        piece = piece.mid(1);
    if (piece.endsWith(quote))
        piece.chop(1);
    return piece.toString();
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
    qsizetype start = 0;
    for (int field = 1; field < index; ++field) {
        const qsizetype end = FieldEnd(line, delimiter, start);
        if (end == line.size())
            return {};
        start = end + 1;
    }
    return TextOfPiece(line.mid(start, FieldEnd(line, delimiter, start) - start));
}

bool RemoveNul(QString &text)
{
    const bool hasNul = text.contains(QChar(u'\0'));
    if (hasNul)
        text.remove(QChar(u'\0'));
    return hasNul;
}

QStringList CsvGetFields(QStringView line, QChar delimiter)
{
    QStringList fields;
    for (qsizetype start = 0; start <= line.size();) {
        const qsizetype end = FieldEnd(line, delimiter, start);
        fields.append(TextOfPiece(line.mid(start, end - start)));
        start = end + 1;
    }
    return fields;
}
