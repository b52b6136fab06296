#pragma once

#include <QString>

#include <unordered_map>

class ImportSource;

/// Tells what an import would do with one line after another, without writing: remembers what the earlier
/// lines would have added or changed.
class ImportForecast final
{
public:
    enum class Kind { Fresh, Changed, Same };

    ImportForecast(const QString &keyColumn, const QString &table)
        : m_keyColumn(keyColumn)
        , m_table(table)
    {
    }
    /// What would happen to the current line of `source`, which must not be faulty. Only inside Reported.
    Kind Take(const ImportSource &source);

private:
    /// The key of a record; those that the import would add count down from -1.
    using Record = qint64;
    bool StandsUnchanged(const QString &test) const;
    void Hold(Record record, size_t values);

    QString m_keyColumn;
    QString m_table;
    // Texts are kept as hashes, so that a large file is not in memory twice.
    std::unordered_map<Record, size_t> m_valuesOf; ///< of the records added or changed so far
    std::unordered_map<size_t, int> m_held;        ///< how many of these records have such values
    std::unordered_map<size_t, Record> m_added;    ///< by what identifies them
    Record m_lastAdded = 0;
};
