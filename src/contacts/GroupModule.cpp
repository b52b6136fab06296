#include "contacts/GroupModule.h"

#include "contacts/ContactModule.h"
#include "contacts/GroupODBC.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "platform/Dialogs.h"

namespace
{
const QString groupExists = QStringLiteral("Group name already exists in database.");

bool Refuse(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("Grouping Members"));
    return false;
}
} // namespace

int GroupName_Add(const QString &name, const QString &referenceId, int linkRef)
{
    return TellDuplicate(ADO_Contact_AddGroupName(SqlSafeText(name), SqlSafeText(referenceId), linkRef),
                         groupExists, QStringLiteral("Add Group Name"));
}

int GroupName_Update(int groupRef, const QString &name, const QString &referenceId, int linkRef)
{
    return TellDuplicate(
        ADO_Contact_UpdateGroupName(groupRef, SqlSafeText(name), SqlSafeText(referenceId), linkRef),
        groupExists, QStringLiteral("Update Group Name"));
}

void GroupName_TakeTyped(int linkRef, ComboModel &list, const QString &typed)
{
    if (linkRef < 1) {
        Refuse(QStringLiteral("No group type selected."));
        return;
    }
    const auto add = [linkRef](const RefLabel &group) {
        return GroupName_Add(group.name, group.reference, linkRef);
    };
    Contact_TakeTyped(list, typed, add, [&] { ADO_Contact_FillGroupNames(linkRef, list); });
}

bool Group_AddMembers(const ComboModel &types, const ComboModel &groups, const ListModel &people,
                      ListModel &members)
{
    if (types.CurrentData() < 1)
        return Refuse(QStringLiteral("No group type selected."));
    if (groups.CurrentData() < 1)
        return Refuse(QStringLiteral("No group name selected."));
    if (people.IsEmpty())
        return Refuse(QStringLiteral("No group members selected."));
    const QString link = u'!' % SqlNumber(types.CurrentData());
    std::vector<ListItem> added;
    for (int row = 0; row < people.Count(); ++row) {
        const ListItem &person = people.At(row);
        if (!members.Contains(person.key % link))
            added.push_back({person.key % link, person.text, {types.CurrentText()}});
    }
    members.AddAll(std::move(added));
    return true;
}

bool Group_Update(int groupRef, ListModel &members)
{
    return groupRef <= 0 || ADO_Contact_UpdateGroup(groupRef, members);
}
