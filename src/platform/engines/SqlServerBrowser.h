#pragma once

#include <QString>

/// The TCP port of a named instance of SQL Server, which the browser service of its computer tells. -1 where
/// no service answers within three seconds, or none of that name runs there.
int InstancePort(const QString &host, const QString &instance);
