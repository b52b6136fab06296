#pragma once

#include "platform/ConnectionText.h"
#include "platform/EngineError.h"

#include <optional>

/// What the ODBC driver is given for a server or a data source; nothing, with `errors` filled, where the
/// driver or the data source is not there.
std::optional<QString> OdbcDriverText(const ConnectionParts &parts, EngineErrors &errors);
