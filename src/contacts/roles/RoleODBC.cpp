#include "contacts/roles/RoleODBC.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"

namespace
{
QString SameRole(const RoleType &role)
{
    return u"SELECT RoleTypeRef FROM RoleTypes WHERE Name = '" % role.name % u"' AND ReferenceID = '" %
           role.referenceId % u"'";
}

QString DateText(const Recordset::Row &row, QStringView column)
{
    return IntToDateText(static_cast<int>(row.Long(column)));
}
} // namespace

int ADO_Contact_AddRoleType(const RoleType &role)
{
    const QString sameRole = SameRole(role);
    return AddRow("ADO_Contact_AddRoleType", sameRole,
                  u"INSERT INTO RoleTypes (Name,Description,ChargeRate,Status,ReferenceID) VALUES ('" %
                      role.name % u"','" % role.description % u"'," % SqlNumber(role.chargeRate) % u',' %
                      SqlNumber(static_cast<int>(role.status)) % u",'" % role.referenceId % u"')",
                  sameRole, u"RoleTypeRef");
}

int ADO_Contact_UpdateRoleType(RoleTypeRef roleTypeRef, const RoleType &role)
{
    return UpdateRow("ADO_Contact_UpdateRoleType",
                     SameRole(role) % u" AND RoleTypeRef <> " % SqlNumber(roleTypeRef),
                     u"UPDATE RoleTypes SET Name = '" % role.name % u"', Description = '" % role.description %
                         u"', ChargeRate = " % SqlNumber(role.chargeRate) % u", Status = " %
                         SqlNumber(static_cast<int>(role.status)) % u", ReferenceID = '" % role.referenceId %
                         u"' WHERE RoleTypeRef = " % SqlNumber(roleTypeRef),
                     roleTypeRef.number);
}

ReadRow<RoleType> ADO_Contact_ShowRoleType(RoleTypeRef roleTypeRef)
{
    return ReadOne<RoleType>(
        "ADO_Contact_ShowRoleType", u"SELECT * FROM RoleTypes WHERE RoleTypeRef = " % SqlNumber(roleTypeRef),
        [](const Recordset::Row &row) {
            return RoleType{row.Text(u"Name"), row.Text(u"Description"), row.Double(u"ChargeRate"),
                            static_cast<RoleStatus>(row.Long(u"Status")), row.Text(u"ReferenceID")};
        });
}

void ADO_Contact_FillRoleTypeList(ComboModel &list, bool allTypes)
{
    Reported("ADO_Contact_FillRoleTypeList", [&] {
        list.Clear();
        const Recordset roles = OpenRecordset(
            allTypes ? QStringLiteral("SELECT * FROM RoleTypes ORDER BY Name ASC")
                     : QStringLiteral("SELECT * FROM RoleTypes WHERE Status = 1 ORDER BY Name ASC"));
        std::vector<ComboItem> items;
        for (const Recordset::Row row : roles)
            items.push_back({row.Text(u"Name"), static_cast<int>(row.Long(u"RoleTypeRef"))});
        list.Fill(std::move(items));
        list.SetCurrent(0);
    });
}

double ADO_Contact_GetRoleChargeRate(RoleTypeRef roleTypeRef)
{
    return Reported("ADO_Contact_GetRoleChargeRate", 0.0, [&] {
        const Recordset rate =
            OpenRecordset(u"SELECT ChargeRate FROM RoleTypes WHERE RoleTypeRef = " % SqlNumber(roleTypeRef));
        return rate.IsEmpty() ? 0.0 : rate.First().Double(u"ChargeRate");
    });
}

bool ADO_Contact_GetRoleInUse(RoleTypeRef roleTypeRef, ContactRef contactRef)
{
    return Reported("ADO_Contact_GetRoleInUse", true, [&] {
        if (contactRef.number != 0)
            return HasRow(u"SELECT ContactRef FROM CourseStaff WHERE ContactRef = " % SqlNumber(contactRef) %
                          u" AND RoleTypeRef = " % SqlNumber(roleTypeRef));
        return HasRow(u"SELECT ContactRef FROM CourseStaff WHERE RoleTypeRef = " % SqlNumber(roleTypeRef));
    });
}

bool ADO_Contact_RolesWipe(ContactRef contactRef)
{
    return RunWithKey("ADO_Contact_RolesWipe", {u"DELETE FROM ContactRoles WHERE ContactRef = "},
                      contactRef.number);
}

bool ADO_Contact_AddContactRole(ContactRef contactRef, RoleTypeRef roleTypeRef, double chargeRate,
                                int startDate, int endDate)
{
    return Reported("ADO_Contact_AddContactRole", false, [&] {
        Execute(u"INSERT INTO ContactRoles (ContactRef,RoleTypeRef,ChargeRate,StartDate,EndDate) VALUES (" %
                SqlNumber(contactRef) % u',' % SqlNumber(roleTypeRef) % u',' % SqlNumber(chargeRate) % u',' %
                SqlNumber(startDate) % u',' % SqlNumber(endDate) % u')');
        return true;
    });
}

bool ADO_Contact_DeleteRole(RoleTypeRef roleTypeRef)
{
    return RunWithKey(
        "ADO_Contact_DeleteRole",
        {u"DELETE FROM ContactRoles WHERE RoleTypeRef = ", u"DELETE FROM RoleTypes WHERE RoleTypeRef = "},
        roleTypeRef.number);
}

bool ADO_Contact_GetRoles(ContactRef contactRef, ListModel &list)
{
    return Reported("ADO_Contact_GetRoles", false, [&] {
        list.Clear();
        const Recordset roles =
            OpenRecordset(u"SELECT ContactRoles.*, RoleTypes.Name FROM ContactRoles INNER JOIN RoleTypes ON "
                          u"ContactRoles.RoleTypeRef = RoleTypes.RoleTypeRef WHERE ContactRef = " %
                          SqlNumber(contactRef) % u" ORDER BY RoleTypes.Name ASC");
        std::vector<ListItem> items;
        for (const Recordset::Row row : roles)
            items.push_back({u'?' % row.Text(u"RoleTypeRef"),
                             row.Text(u"Name"),
                             {FormatNumber(row.Double(u"ChargeRate")), DateText(row, u"StartDate"),
                              DateText(row, u"EndDate")}});
        list.Fill(std::move(items));
        return true;
    });
}
