#pragma once

#include "platform/connection/ConnectionText.h"
#include "platform/connection/EngineError.h"

/// Writes what the ODBC driver is given for a server or a data source to `text`. False, with `errors` filled,
/// where the driver or the data source is not there, or no user is named. Asks the network which port a named
/// instance has.
bool OdbcDriverText(const ConnectionParts &parts, QString &text, EngineErrors &errors);
