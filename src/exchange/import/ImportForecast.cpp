#include "exchange/import/ImportForecast.h"

#include "database/statements/MiscODBC.h"
#include "exchange/import/ImportLine.h"
#include "exchange/import/ImportSource.h"

namespace
{
/// A line as the database compares it: without regard to case, and references by the row that they name.
struct ComparedLine {
    LineValues values;
    QString all;
    QString identity;
    bool isKnown = true; ///< every reference is already in the database
    bool isIdentityKnown = true;
};

ComparedLine Compared(const ImportSource &source)
{
    ComparedLine line;
    for (const ImportColumn &column : source.Columns()) {
        const QString text = source.Text(column);
        const QString value = column.KnownValue(text);
        const bool isKnown = !value.isEmpty();
        const QString compared =
            QString(isKnown ? value : u"new " % column.LookedUp(text)).toCaseFolded() % u'\x1F';
        line.all += compared;
        line.isKnown = line.isKnown && isKnown;
        if (column.ColumnRole() != ImportColumn::Role::Plain) {
            line.identity += compared;
            line.isIdentityKnown = line.isIdentityKnown && isKnown;
        }
        line.values.Add(column, value);
    }
    return line;
}
} // namespace

/// Whether a record in the database satisfies the test, and no earlier line would have changed it.
bool ImportForecast::StandsUnchanged(const QString &test) const
{
    for (const Recordset::Row row : OpenRecordset(SelectKey(m_keyColumn, m_table, test))) {
        if (!m_valuesOf.contains(row.Long(m_keyColumn)))
            return true;
    }
    return false;
}

void ImportForecast::Hold(Record record, size_t values)
{
    const auto [at, isNew] = m_valuesOf.try_emplace(record, values);
    if (!isNew)
        --m_held[at->second];
    at->second = values;
    ++m_held[values];
}

ImportForecast::Kind ImportForecast::Take(const ImportSource &source)
{
    const ComparedLine line = Compared(source);
    const size_t values = qHash(line.all);
    const auto held = m_held.find(values);
    if ((held != m_held.end() && held->second > 0) ||
        (line.isKnown && StandsUnchanged(line.values.FullTest())))
        return Kind::Same;

    Record record = 0;
    const size_t identity = qHash(line.identity);
    if (!line.identity.isEmpty() && line.isIdentityKnown)
        record = ReadKey(SelectKey(m_keyColumn, m_table, line.values.IdentityTest()), m_keyColumn);
    if (const auto added = m_added.find(identity);
        record == 0 && !line.identity.isEmpty() && added != m_added.end())
        record = added->second;
    if (record != 0) {
        Hold(record, values);
        return Kind::Changed;
    }
    Hold(--m_lastAdded, values);
    m_added.emplace(identity, m_lastAdded);
    return Kind::Fresh;
}
