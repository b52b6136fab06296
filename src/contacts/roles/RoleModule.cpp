#include "contacts/roles/RoleModule.h"

#include "core/session/Session.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

namespace
{
enum SubItem { Rate, StartDate, EndDate };

const QString roleTypes = QStringLiteral("RoleTypes");
const QString roleTypeKey = QStringLiteral("RoleTypeRef");
const QString roleExists = QStringLiteral("Role already exists in database.");

RoleType Safe(RoleType role)
{
    for (QString *text : {&role.name, &role.description, &role.referenceId})
        *text = SqlSafeText(*text);
    return role;
}

bool Asked(const QString &text, const QString &title)
{
    return Dialogs::MsgBox(text, title, Dialogs::Buttons::YesNo, Dialogs::Icon::Question) ==
           Dialogs::Answer::Yes;
}

/// "DD/MM/YYYY", padded or not, as a date-int: what came from the database goes back as it was, a number
/// that is no date included.
int DateOfText(const QString &text)
{
    constexpr int year = 10000;
    constexpr int month = 100;
    return text.section(u'/', 2).toInt() * year + text.section(u'/', 1, 1).toInt() * month +
           text.section(u'/', 0, 0).toInt();
}

QString TodayUnpadded()
{
    const QDate today = Clock::Today();
    return QString::number(today.day()) % u'/' % QString::number(today.month()) % u'/' %
           QString::number(today.year());
}

/// False if the role stays in the list.
bool MayRemove(ContactRef contactRef, ListModel &roles, const QString &key)
{
    const QString title = QStringLiteral("Remove Role");
    if (!Asked(u"Remove Role " % roles.At(roles.Find(key)).text % u" from this Contact?", title))
        return false;
    if (!ADO_Contact_GetRoleInUse(RoleTypeRef(KeyNumber(key)), contactRef))
        return true;
    if (Asked(
            QStringLiteral("Contact has been appointed todo this Role!\nWould you like to sent the End Role "
                           "Date to today?"),
            title))
        roles.SetSubItem(roles.Find(key), EndDate, TodayUnpadded());
    return false;
}
} // namespace

int RoleType_Add(const RoleType &role)
{
    return TellDuplicate(ADO_Contact_AddRoleType(Safe(role)), roleExists, QStringLiteral("Add Role"));
}

int RoleType_Update(RoleTypeRef roleTypeRef, const RoleType &role)
{
    const QString title = QStringLiteral("Update Role");
    const int living = LivingKey(roleTypes, roleTypeKey, roleTypeRef.number, QStringLiteral("role"), title);
    return living < 1 ? living
                      : TellDuplicate(ADO_Contact_UpdateRoleType(roleTypeRef, Safe(role)), roleExists, title);
}

bool RoleType_MayDelete(RoleTypeRef roleTypeRef, const QString &text)
{
    if (!ADO_Contact_GetRoleInUse(roleTypeRef, ContactRef(0)))
        return true;
    Dialogs::MsgBox(u"Unable to delete Role '" % text % u"' already in use!", QStringLiteral("Role Deletion"),
                    Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return false;
}

ContactRole Role_Of(const ListModel &roles, int row)
{
    const ListItem &item = roles.At(row);
    return {RoleTypeRef(KeyNumber(item.key)), item.text, TextValue(item.subItems.value(Rate)),
            DateOfText(item.subItems.value(StartDate)), DateOfText(item.subItems.value(EndDate))};
}

void Role_AddToList(const ContactRole &role, ListModel &roles)
{
    const QString key = u'?' % SqlNumber(role.roleTypeRef);
    const QStringList subItems{FormatNumber(role.chargeRate), IntToDateText(int(role.startDate)),
                               IntToDateText(int(role.endDate))};
    const int row = roles.Find(key);
    if (row < 0) {
        roles.Add({key, role.name, subItems});
        return;
    }
    if (!Asked(QStringLiteral("Contact already on this role, Do you want to update?"),
               QStringLiteral("Update Role")))
        return;
    for (int subItem = Rate; subItem <= EndDate; ++subItem)
        roles.SetSubItem(row, subItem, subItems.at(subItem));
}

void Role_RemoveSelected(ContactRef contactRef, ListModel &roles)
{
    for (const QString &key : roles.SelectedKeys()) {
        if (MayRemove(contactRef, roles, key))
            roles.RemoveKey(key);
        else
            roles.Select(roles.Find(key), false);
    }
}

bool Role_LeaveOutDeleted(ListModel &roles)
{
    return LeaveOutDeleted(roles, roleTypes, roleTypeKey, QStringLiteral("Roles"));
}

bool Role_Store(ContactRef contactRef, const ListModel &roles)
{
    return Reported("Role_Store", false, [&] {
        // In one piece: a crash after the wipe would lose the roles.
        WriteGroup group(gConnection);
        bool stored = ADO_Contact_RolesWipe(contactRef);
        for (int row = 0; stored && row < roles.Count(); ++row) {
            const ContactRole role = Role_Of(roles, row);
            stored = ADO_Contact_AddContactRole(contactRef, role.roleTypeRef, role.chargeRate, role.startDate,
                                                role.endDate);
        }
        EndRows(group);
        return stored;
    });
}
