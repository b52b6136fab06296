#pragma once

#include "platform/connection/EngineError.h"

namespace OdbcErrors
{
constexpr int logonRefused = 18456;
constexpr int catalogueRefused = 4060;
constexpr int lockTimeout = 1222; ///< SQL Server's own number for a row
constexpr int unreachable = 20009;
constexpr int noDriver = 126;
constexpr int noDataSource = 2;
constexpr int unnumbered = 1;

/// The records that a failure left at one of the manager's handles (of a connection or a statement), as the
/// engine's error list. A refused logon has number 18456, however the driver reports it; a missing catalogue,
/// which SQL Server also calls a refused logon, has 4060.
EngineErrors ListOf(short handleType, void *handle);
/// A single error for a driver that is not installed, naming the package that contains it.
EngineErrors DriverMissing(const QString &driver);
EngineErrors One(int number, const QString &description, const QString &sqlState = {});
} // namespace OdbcErrors
