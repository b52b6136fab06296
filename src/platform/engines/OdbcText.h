#pragma once

#include "platform/connection/ConnectionText.h"
#include "platform/connection/EngineError.h"

/// Writes what the ODBC driver is given for a server or a data source to `text`. False, with `errors` filled,
/// if the driver or the data source does not exist, or no user is named. Asks the network which port a named
/// instance has.
bool OdbcDriverText(const ConnectionParts &parts, QString &text, EngineErrors &errors);
