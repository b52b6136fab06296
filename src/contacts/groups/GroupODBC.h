#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class ComboModel;
class ListModel;
class Progress;
class TreeModel;

/// Data functions of the groups that people belong to; tables `GroupNames`, `LinkNames` (the types) and
/// `Groups` (who is in a group, and under which type). A person may be in one group under several types.

/// The fields of one row of `GroupNames`.
struct GroupName {
    QString name;
    QString referenceId;
    LinkRef linkRef; ///< the type
};

/// What a screen knows of the members of a group.
struct SeenMembers {
    std::optional<QSet<QString>> keys; ///< as they were read or written last; nothing = not known
    // Whom the last write found added, or removed, by another workstation since.
    QStringList joined;
    QStringList left;

    void See(const ListModel &members);
};

/// The type in the key of a member, as ADO_Contact_ShowGroup makes it.
int MemberLink(const QString &key);

/// Adds a group to a type. Texts come already safe for SQL. The new GroupRef, 0 where a group of any type
/// has name and reference already, -1 on an error.
int ADO_Contact_AddGroupName(const QString &name, const QString &referenceId, LinkRef linkRef);
/// Writes name, reference and type of a group. Texts come already safe for SQL. `groupRef`, 0 where another
/// group of any type has name and reference, -1 on an error.
int ADO_Contact_UpdateGroupName(GroupRef groupRef, const QString &name, const QString &referenceId,
                                LinkRef linkRef);
/// Reads one group for changing.
ReadRow<GroupName> ADO_Contact_ShowGroupName(GroupRef groupRef);
/// Fills a drop-down list with the groups of a type, the GroupRef as item data; none is chosen.
void ADO_Contact_FillGroupNames(LinkRef linkRef, ComboModel &list);

/// Fills `list` with the members of a group, in bold: key "?" + person + "!" + type, "surname, forename",
/// and the name of the type. False on an error: the list may lack members then.
bool ADO_Contact_ShowGroup(GroupRef groupRef, ListModel &list);
/// Makes the members of a group those of `list`, keys as of ADO_Contact_ShowGroup; what is stored loses its
/// bold mark. Whom another workstation added or removed since `seen` joins or leaves the list first. Other
/// workstations, and anybody who comes after a crash, see the members of before or all of the new ones. False
/// where `progress` was cancelled: the group keeps the members of before; and on an error: it has the members
/// up to there.
bool ADO_Contact_UpdateGroup(GroupRef groupRef, ListModel &list, SeenMembers &seen, Progress &progress);
/// Fills `tree` with all relations of a person: the type, the group under it, and under that the person and
/// the other members of the group under that type. Leaves begin with "?" + ContactRef.
void ADO_Contact_ShowGroup_Tree(ContactRef contactRef, TreeModel &tree);

/// Deletes a type with its groups, and every membership under it. False on an error.
bool ADO_Contact_DeleteLink(LinkRef linkRef);
/// Deletes a group and its memberships. False on an error.
bool ADO_Contact_DeleteGroup(GroupRef groupRef);
