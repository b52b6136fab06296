#pragma once

#include "database/values/Keys.h"

#include <QStringView>

/// Row 1 of the tables that others refer to means "nothing chosen": joins rely on it, and lists hide it
/// because its name is empty. No data function changes or deletes it.
constexpr bool IsSentinel(qint64 key)
{
    return key == 1;
}
template <typename Table>
constexpr bool IsSentinel(RowKey<Table> key)
{
    return IsSentinel(key.number);
}
/// The same for a function that serves many tables: in some of them row 1 is a row like any other.
bool IsSentinel(QStringView table, qint64 key);
