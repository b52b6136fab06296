#pragma once

#include <QString>

class ComboModel;
class ListModel;

/// Users as the screens see them: texts come as typed, table `Users`.

/// Checks a name and password as typed and sets gUserRights by them; a logon that fails clears it. True
/// when the logon passed. Reads `Users`.
bool CheckLogon(const QString &name, const QString &password);

/// Every user by name; key "?" and the `UserID`.
void Users_FillList(ListModel &list);
/// Every user by name, `UserID` as data; the first is chosen.
void Users_Fill(ComboModel &combo);

/// The new `UserID`; 0 where the name is taken, which the user is told; -1 on an error.
int Users_Add(const QString &name, const QString &password, const QString &rights);
/// False on an error.
bool Users_UpdateSecurity(int id, const QString &rights);
/// True if both are the same, case included; otherwise the user has been told.
bool Users_PasswordsMatch(const QString &password, const QString &confirmed);
/// False on an error.
bool Users_ChangePassword(int id, const QString &password);
/// False on an error.
bool Users_Delete(int id);
/// "" where there is no such user, and on an error.
QString Users_GetSecurityRights(int id);
