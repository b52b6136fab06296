#pragma once

#include <QHash>
#include <QString>

#include <optional>

class ComboModel;
class ListModel;

/// Data functions for users; table `Users`. Texts are passed already safe for SQL.

/// The rights text of the user with that name and password: RightsBlank if no user is defined, if the user's
/// own rights are empty, and on an error (the check fails open); "" for a wrong name or password.
QString ADO_Users_Logon(const QString &name, const QString &password);

/// Fills the list with every user by name; the key is "?" and the `UserID`.
void ADO_Users_FillList(ListModel &list);
/// Fills the drop-down list with every user by name, with the `UserID` as data, and chooses the first.
void ADO_Users_Fill(ComboModel &combo);

/// Returns the new `UserID`; 0 if the name is taken, -1 on an error. Only the first 255 characters of
/// `rights` are stored, so the last position of a new user reads as absent until the rights are next saved.
int ADO_Users_AddUser(const QString &name, const QString &password, const QString &rights);
/// Stores all characters of `rights`. False on an error.
bool ADO_Users_UpdateUserSecurity(int id, const QString &rights);
/// False on an error.
bool ADO_Users_ChangePassword(int id, const QString &password);
/// False on an error.
bool ADO_Users_Delete(int id);
/// What every user may do, by `UserID`; all of it where a user has no text of rights. Nothing on an error.
std::optional<QHash<int, QString>> ADO_Users_AllRights();
/// The rights text of that user; "" if there is no such user, and on an error.
QString ADO_Users_GetSecurityRights(int id);
