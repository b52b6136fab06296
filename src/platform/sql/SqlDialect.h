#pragma once

#include "platform/sql/SqlTokens.h"

/// The forms of SQL that the engines take. SQL Server's differs least from the system's own.
enum class SqlDialect { File, PostgreSql, SqlServer };

/// The statement as the engine takes it; a lifted value stands as "?". `order` is added to its end.
QString SqlFor(SqlDialect dialect, const SqlTokens &tokens, const QString &order = {});
