#pragma once

#include <QString>

/// `caption` with the rest of the version line: "Version 1.20 (1020/3)". Reads the schema level of the open
/// database; 0 without one.
QString VersionLine(const QString &caption);
