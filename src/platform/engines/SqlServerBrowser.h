#pragma once

#include <QString>

/// The TCP port of a named instance of SQL Server, as told by the browser service of its computer. -1 if no
/// service answers within three seconds, or no instance of that name runs there.
int InstancePort(const QString &host, const QString &instance);
