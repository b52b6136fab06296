#pragma once

#include <QStringView>

/// Row 1 of the tables that others refer to means that nothing was chosen: joins rely on it, and lists hide
/// it by its empty name. No data function changes or deletes it.
constexpr bool IsSentinel(qint64 key)
{
    return key == 1;
}
/// The same for a function that serves many tables: row 1 of some is a row like any other.
bool IsSentinel(QStringView table, qint64 key);
