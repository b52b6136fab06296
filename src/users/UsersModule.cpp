#include "users/UsersModule.h"

#include "core/Session.h"
#include "database/GlobalCode.h"
#include "users/UsersODBC.h"

bool CheckLogon(const QString &name, const QString &password)
{
    gUserRights = ADO_Users_Logon(SqlSafeText(name), SqlSafeText(password));
    return !gUserRights.isEmpty();
}
