#pragma once

#include "schema/Schema.h"

/// The script that makes an empty database of each kind, sentinel rows included.

/// Statements of the file engine, for a database that is not there yet.
QString FileScript(const Schema &schema);
/// C++ source of the indexes of a database file, for those that are there already.
QString FileIndexList(const Schema &schema);
/// Transact-SQL, in batches parted by GO, for sqlcmd and its like.
QString SqlServerScript(const Schema &schema);
/// PostgreSQL, for psql.
QString PostgreSqlScript(const Schema &schema);
