#include "users/UsersODBC.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"

namespace
{
/// Characters of a new user's rights that are stored.
constexpr int newRightsStored = 255;

/// All rights where none are stored.
QString RightsOf(const Recordset::Row &user)
{
    const QString rights = user.Text(u"SecurityRights");
    return rights.isEmpty() ? RightsBlank() : rights;
}
} // namespace

QString ADO_Users_Logon(const QString &name, const QString &password)
{
    return Reported("ADO_Users_Logon", RightsBlank(), [&] {
        if (!HasRow(QStringLiteral("SELECT * FROM Users")))
            return RightsBlank();
        const Recordset user = OpenRecordset(u"SELECT * FROM Users WHERE UserName = '" % name %
                                             u"' AND Password = '" % password % u"'");
        if (user.IsEmpty())
            return QString();
        return RightsOf(user.First());
    });
}

void ADO_Users_FillList(ListModel &list)
{
    std::vector<ListItem> items;
    Reported("ADO_Users_FillList", [&] {
        for (const auto row : OpenRecordset(QStringLiteral("SELECT * FROM Users ORDER BY UserName ASC")))
            items.push_back({u'?' % SqlNumber(row.Long(u"UserID")), row.Text(u"UserName")});
    });
    list.Fill(std::move(items));
}

void ADO_Users_Fill(ComboModel &combo)
{
    std::vector<ComboItem> items;
    Reported("ADO_Users_Fill", [&] {
        const QString users = QStringLiteral("SELECT UserID, UserName FROM Users ORDER BY UserName ASC");
        for (const auto row : OpenRecordset(users))
            items.push_back({row.Text(u"UserName"), static_cast<int>(row.Long(u"UserID"))});
    });
    combo.Fill(std::move(items));
    combo.SetCurrent(0);
}

int ADO_Users_AddUser(const QString &name, const QString &password, const QString &rights)
{
    const QString sameName = u"SELECT * FROM Users WHERE UserName = '" % name % u"'";
    return AddRow("ADO_Users_AddUser", sameName,
                  u"INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('" % name % u"','" %
                      password % u"','" % rights.left(newRightsStored) % u"')",
                  sameName, u"UserID");
}

bool ADO_Users_UpdateUserSecurity(int id, const QString &rights)
{
    return Reported("ADO_Users_UpdateUserSecurity", false, [&] {
        Execute(u"UPDATE Users SET SecurityRights = '" % rights % u"' WHERE UserID = " % SqlNumber(id));
        return true;
    });
}

bool ADO_Users_ChangePassword(int id, const QString &password)
{
    return Reported("ADO_Users_ChangePassword", false, [&] {
        Execute(u"UPDATE Users SET Password = '" % password % u"' WHERE UserID = " % SqlNumber(id));
        return true;
    });
}

bool ADO_Users_Delete(int id)
{
    return Reported("ADO_Users_Delete", false, [&] {
        Execute(u"DELETE FROM Users WHERE UserID = " % SqlNumber(id));
        return true;
    });
}

std::optional<QHash<int, QString>> ADO_Users_AllRights()
{
    using Rights = QHash<int, QString>;
    return Reported("ADO_Users_AllRights", std::optional<Rights>(), [&] {
        Rights all;
        for (const auto row : OpenRecordset(QStringLiteral("SELECT UserID, SecurityRights FROM Users")))
            all.insert(static_cast<int>(row.Long(u"UserID")), RightsOf(row));
        return all;
    });
}

QString ADO_Users_GetSecurityRights(int id)
{
    return Reported("ADO_Users_GetSecurityRights", QString(), [&] {
        const Recordset user = OpenRecordset(u"SELECT * FROM Users WHERE UserID = " % SqlNumber(id));
        return user.IsEmpty() ? QString() : user.First().Text(u"SecurityRights");
    });
}
