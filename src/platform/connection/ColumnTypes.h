#pragma once

#include "platform/connection/Recordset.h"

namespace ColumnTypes
{
/// The defined size of a text column that declares no size.
constexpr int unlimitedSize = 1'073'741'823;
} // namespace ColumnTypes

/// Type and defined size of a column declared as, say, "VARCHAR(50)".
RecordsetColumn ColumnOfDeclaredType(const QString &declared);
