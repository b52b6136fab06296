#pragma once

#include "platform/Recordset.h"

#include <QString>

#include <optional>

/// Opens the query of a data set; only inside Reported. Nothing for a text that does not begin with SELECT,
/// and for one with "USERS" anywhere in it: no data set can read the user table, whatever the map says.
std::optional<Recordset> OpenReportQuery(const QString &sql);
