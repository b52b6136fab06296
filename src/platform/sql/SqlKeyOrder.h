#pragma once

#include "platform/sql/SqlTokens.h"

#include <QHash>

/// What the rows of each table are ordered by, its key column or else the order in which they were stored,
/// qualified with the table as in a statement, by the table's name in lower case.
using TableKeys = QHash<QString, QString>;

/// The ORDER BY that a query for rows of one table gets if it has none of its own. Without it
/// servers return the rows in any order, and PostgreSQL in another one after every update. "" for all other
/// statements.
QString KeyOrder(const SqlTokens &tokens, const TableKeys &keys);
