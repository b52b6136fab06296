#pragma once

#include "schema/Schema.h"

/// The scripts that make an empty database of each kind, including the sentinel rows.

/// Statements for the file engine, for a new database.
QString FileScript(const Schema &schema);
/// C++ source with the indexes of a database file, for existing databases.
QString FileIndexList(const Schema &schema);
/// Transact-SQL, in batches separated by GO, for sqlcmd and the like.
QString SqlServerScript(const Schema &schema);
/// PostgreSQL, for psql.
QString PostgreSqlScript(const Schema &schema);
