#pragma once

#include "platform/connection/Connection.h"

#include <QString>

#include <optional>

/// False for a text that does not begin with SELECT, and for one with "USERS" anywhere in it: no data set can
/// read the user table, whatever the map says.
bool IsReportQuery(const QString &sql);
/// Opens the query of a data set; only inside Reported. Nullopt for a text that is not such a query.
std::optional<Recordset> OpenReportQuery(const QString &sql);
/// The same for very many rows, which are handed over as they come. False for a text that is not such a
/// query.
bool ReadReportQuery(const QString &sql, const TakeRows &take);
