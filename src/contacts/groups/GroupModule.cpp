#include "contacts/groups/GroupModule.h"

#include "contacts/groups/GroupODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "controls/ComboModel.h"
#include "database/statements/DeletedMeanwhile.h"
#include "platform/desktop/Dialogs.h"

namespace
{
const QString groupExists = QStringLiteral("Group name already exists in database.");
const QString groupings = QStringLiteral("Groupings");

int LivingGroup(GroupRef groupRef, const QString &title)
{
    return LivingKey(QStringLiteral("GroupNames"), QStringLiteral("GroupRef"), groupRef.number,
                     QStringLiteral("group"), title);
}

int LivingType(LinkRef linkRef, const QString &title)
{
    return LivingKey(QStringLiteral("LinkNames"), QStringLiteral("LinkRef"), linkRef.number,
                     QStringLiteral("group type"), title);
}

/// False on an error.
bool LeaveOutDeletedMembers(ListModel &members)
{
    return LeaveOutDeleted(members, QStringLiteral("Contacts"), QStringLiteral("ContactRef"), groupings) &&
           LeaveOutDeleted(
               members, QStringLiteral("LinkNames"), QStringLiteral("LinkRef"), groupings,
               [](const ListItem &member) { return MemberLink(member.key); },
               [](const ListItem &member) { return member.subItems.value(0); });
}

bool Refuse(const QString &text)
{
    Dialogs::MsgBox(text, QStringLiteral("Grouping Members"));
    return false;
}
} // namespace

int GroupName_Add(const QString &name, const QString &referenceId, LinkRef linkRef)
{
    const QString title = QStringLiteral("Add Group Name");
    const int type = LivingType(linkRef, title);
    if (type < 1)
        return type;
    return TellDuplicate(ADO_Contact_AddGroupName(SqlSafeText(name), SqlSafeText(referenceId), linkRef),
                         groupExists, title);
}

int GroupName_Update(GroupRef groupRef, const QString &name, const QString &referenceId, LinkRef linkRef)
{
    const QString title = QStringLiteral("Update Group Name");
    const int group = LivingGroup(groupRef, title);
    const int living = group < 1 ? group : LivingType(linkRef, title);
    if (living < 1)
        return living;
    return TellDuplicate(
        ADO_Contact_UpdateGroupName(groupRef, SqlSafeText(name), SqlSafeText(referenceId), linkRef),
        groupExists, title);
}

void GroupName_TakeTyped(LinkRef linkRef, ComboModel &list, const QString &typed)
{
    if (!linkRef) {
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

int Group_Check(GroupRef groupRef)
{
    return LivingGroup(groupRef, groupings);
}

int Group_LeaveOutDeleted(GroupRef groupRef, ListModel &members)
{
    const int group = Group_Check(groupRef);
    return group < 1 || LeaveOutDeletedMembers(members) ? group : -1;
}

int Group_Update(GroupRef groupRef, ListModel &members, SeenMembers &seen, Progress &progress)
{
    if (!groupRef)
        return groupRef.number;
    const int group = Group_LeaveOutDeleted(groupRef, members);
    return group < 1 || ADO_Contact_UpdateGroup(groupRef, members, seen, progress) ? group : -1;
}

void Group_TellElsewhere(const QString &groupName, SeenMembers &seen)
{
    const QString group = u"the group '" % groupName % u"' meanwhile";
    TellNames(u"Another user has added these to " % group % u", and they stay in it:", seen.joined,
              groupings);
    TellNames(u"Another user has removed these from " % group % u':', seen.left, groupings);
    seen.joined.clear();
    seen.left.clear();
}
