#pragma once

#include <QString>

/// Checks a name and password as typed and sets gUserRights by them; a logon that fails clears it. True
/// when the logon passed. Reads `Users`.
bool CheckLogon(const QString &name, const QString &password);
