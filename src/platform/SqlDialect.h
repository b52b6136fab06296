#pragma once

#include "platform/SqlTokens.h"

/// The forms of SQL that differ from the system's own, which Microsoft's engines take as it stands.
enum class SqlDialect { File, PostgreSql };

/// The statement as the engine takes it; a lifted value stands as "?".
QString SqlFor(SqlDialect dialect, const SqlTokens &tokens);
