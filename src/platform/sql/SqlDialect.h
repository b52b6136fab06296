#pragma once

#include "platform/sql/SqlTokens.h"

/// The forms of SQL that the engines accept. SQL Server's differs least from the system's own.
enum class SqlDialect { File, PostgreSql, SqlServer };

/// The statement in the engine's form; a lifted value is written as "?". `order` is added to its end.
QString SqlFor(SqlDialect dialect, const SqlTokens &tokens, const QString &order = {});
