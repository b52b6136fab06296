#pragma once

#include "platform/connection/Recordset.h"

/// Names are sorted as in a telephone book of the user's language ("Łukasz" after "Luke", not after "Zoë"),
/// which no engine does by itself: a file may be sorted on one workstation and read on another.
namespace NameOrder
{
/// Which texts an engine sorts as a telephone book does.
enum class SortedByEngine { Ascii, None };

/// Returns the rows in that order if `sql` ends with an ORDER BY, ascending, on columns of texts that are
/// among those read; otherwise as they are. Rows that the engine has sorted right already stay in its order.
Recordset Sorted(const QString &sql, const Recordset &rows, SortedByEngine trusted);
} // namespace NameOrder
