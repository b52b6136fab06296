#pragma once

#include "platform/sql/SqlTokens.h"

#include <QHash>

/// The key column of each table, by the table's name in lower case: with its table, as it stands in a
/// statement.
using TableKeys = QHash<QString, QString>;

/// The order by its key that a query of rows of one table gets where it names none, since servers then answer
/// as they like, and PostgreSQL otherwise after every update. "" for all other statements.
QString KeyOrder(const SqlTokens &tokens, const TableKeys &keys);
