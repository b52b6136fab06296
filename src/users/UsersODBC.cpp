#include "users/UsersODBC.h"

#include "database/MiscODBC.h"
#include "database/Security.h"

QString ADO_Users_Logon(const QString &name, const QString &password)
{
    return Reported("ADO_Users_Logon", RightsBlank(), [&] {
        if (!HasRow(QStringLiteral("SELECT * FROM Users")))
            return RightsBlank();
        const Recordset user = OpenRecordset(u"SELECT * FROM Users WHERE UserName = '" % name %
                                             u"' AND Password = '" % password % u"'");
        if (user.IsEmpty())
            return QString();
        const QString rights = user.First().Text(u"SecurityRights");
        return rights.isEmpty() ? RightsBlank() : rights;
    });
}
