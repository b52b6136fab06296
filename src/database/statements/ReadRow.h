#pragma once

#include "database/statements/MiscODBC.h"

#include <optional>
#include <utility>

/// What a data function read when asked for one row: the row, or that there is none, or that the read failed,
/// which is a case of its own.
template <typename Row>
class ReadRow final
{
public:
    ReadRow(Row row)
        : m_row(std::move(row))
    {
    }
    static ReadRow Missing() { return ReadRow(false); }
    static ReadRow Failed() { return ReadRow(true); }

    explicit operator bool() const { return m_row.has_value(); }
    const Row &operator*() const { return *m_row; }
    const Row *operator->() const { return &*m_row; }
    bool HasFailed() const { return m_hasFailed; }
    bool IsMissing() const { return !m_row && !m_hasFailed; }

private:
    explicit ReadRow(bool hasFailed)
        : m_hasFailed(hasFailed)
    {
    }

    std::optional<Row> m_row;
    bool m_hasFailed = false;
};

/// Reads the first row of a query through `take`, which makes a Row of a Recordset::Row.
template <typename Row, typename Take>
ReadRow<Row> ReadOne(const char *routineName, const QString &sql, Take &&take)
{
    return Reported(routineName, ReadRow<Row>::Failed(), [&] {
        const Recordset rows = OpenRecordset(sql);
        return rows.IsEmpty() ? ReadRow<Row>::Missing() : ReadRow<Row>(take(rows.First()));
    });
}
