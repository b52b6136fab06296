#pragma once

#include <QString>

/// Data functions of users; table `Users`. Texts come already safe for SQL.

/// The rights text of the user of that name and password: RightsBlank where no user is defined, where the
/// user's own rights are empty, and on an error (the check fails open); "" for a wrong name or password.
QString ADO_Users_Logon(const QString &name, const QString &password);
