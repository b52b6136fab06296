#include "users/UsersModule.h"

#include "core/session/Session.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Dialogs.h"
#include "users/UsersODBC.h"

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
