#pragma once

#include <QString>

#include <optional>

class ComboModel;
class ListModel;

/// Users as the screens see them: texts are passed as typed. Table `Users`.

/// Checks a name and password as typed and sets gUserRights accordingly; a failed logon clears it. True if
/// the logon succeeded. Reads `Users`.
bool CheckLogon(const QString &name, const QString &password);

/// Lists every user by name; the key is "?" and the `UserID`.
void Users_FillList(ListModel &list);
/// Lists every user by name, with the `UserID` as data, and chooses the first.
void Users_Fill(ComboModel &combo);

/// Asks if nobody would be left who may change the rights of users once user `id` has `rights` (no text at
/// all: is deleted; id 0: is new), while somebody has it now. False if the change is not to be made, and on
/// an error.
bool Users_MayChange(int id, const std::optional<QString> &rights);
/// Returns the new `UserID`; 0, after telling the user, if the name is taken; -1 on an error.
int Users_Add(const QString &name, const QString &password, const QString &rights);
/// False on an error.
bool Users_UpdateSecurity(int id, const QString &rights);
/// True if both are the same, including case; otherwise tells the user.
bool Users_PasswordsMatch(const QString &password, const QString &confirmed);
/// False on an error.
bool Users_ChangePassword(int id, const QString &password);
/// False on an error.
bool Users_Delete(int id);
/// "" if there is no such user, and on an error.
QString Users_GetSecurityRights(int id);
