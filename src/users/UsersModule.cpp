#include "users/UsersModule.h"

#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Dialogs.h"
#include "users/UsersODBC.h"

#include <algorithm>

namespace
{
/// Without users, everybody may do everything.
bool SomebodyKeepsSecurity(const QHash<int, QString> &rights)
{
    return rights.isEmpty() || std::any_of(rights.begin(), rights.end(), [](const QString &user) {
               return RightIn(user, Right::SecurityMenu) >= Level::Full &&
                      RightIn(user, Right::Users) >= Level::Edit;
           });
}
} // namespace

bool CheckLogon(const QString &name, const QString &password)
{
    gUserRights = ADO_Users_Logon(SqlSafeText(name), SqlSafeText(password));
    return !gUserRights.isEmpty();
}

void Users_FillList(ListModel &list)
{
    ADO_Users_FillList(list);
}

void Users_Fill(ComboModel &combo)
{
    ADO_Users_Fill(combo);
}

bool Users_MayChange(int id, const std::optional<QString> &rights)
{
    std::optional<QHash<int, QString>> users = ADO_Users_AllRights();
    if (!users)
        return false;
    const bool somebodyNow = SomebodyKeepsSecurity(*users);
    if (rights)
        users->insert(id, *rights);
    else
        users->remove(id);
    return !somebodyNow || SomebodyKeepsSecurity(*users) ||
           Dialogs::MsgBox(
               QStringLiteral("Nobody would be able to change the rights of users after this change, not "
                              "even to take it back.\nOkay to go on?"),
               QStringLiteral("Security"), Dialogs::Buttons::YesNo, Dialogs::Icon::Exclamation,
               Dialogs::Answer::No) == Dialogs::Answer::Yes;
}

int Users_Add(const QString &name, const QString &password, const QString &rights)
{
    return TellDuplicate(ADO_Users_AddUser(SqlSafeText(name), SqlSafeText(password), rights),
                         QStringLiteral("User already exists in database."), QStringLiteral("Add User"));
}

bool Users_UpdateSecurity(int id, const QString &rights)
{
    return ADO_Users_UpdateUserSecurity(id, rights);
}

bool Users_PasswordsMatch(const QString &password, const QString &confirmed)
{
    if (password == confirmed)
        return true;
    Dialogs::MsgBox(QStringLiteral("Password doesn't match Confirm Password!"), QStringLiteral("Password"),
                    Dialogs::Buttons::Ok, Dialogs::Icon::Stop);
    return false;
}

bool Users_ChangePassword(int id, const QString &password)
{
    return ADO_Users_ChangePassword(id, SqlSafeText(password));
}

bool Users_Delete(int id)
{
    return ADO_Users_Delete(id);
}

QString Users_GetSecurityRights(int id)
{
    return ADO_Users_GetSecurityRights(id);
}
