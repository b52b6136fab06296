#pragma once

#include "database/values/Keys.h"

#include <QString>

struct SeenMembers;
class ComboModel;
class ListModel;
class Progress;

/// The logic of groups: makes texts safe for SQL, and speaks to the user.

/// Adds a group as typed to a type. The new GroupRef; 0, after telling the user, where a group of any type
/// has name and reference or where the type was deleted; -1 on an error.
int GroupName_Add(const QString &name, const QString &referenceId, LinkRef linkRef);
/// Writes a group as typed; results as of GroupName_Add, 0 as well where the group itself was deleted.
int GroupName_Update(GroupRef groupRef, const QString &name, const QString &referenceId, LinkRef linkRef);
/// Takes a name that somebody typed in the list of a type's groups and that is none of them ("[reference]
/// name" or a bare name): adds the group to the type, fills `list` again and chooses the new group; where
/// the name exists there under another reference, that group. Where nothing came of it the choice stays.
void GroupName_TakeTyped(LinkRef linkRef, ComboModel &list, const QString &typed);

/// Adds the people to the members, each under the type chosen, unless they are there under it. False, after
/// telling the user, where no type or no group is chosen or nobody is in `people`.
bool Group_AddMembers(const ComboModel &types, const ComboModel &groups, const ListModel &people,
                      ListModel &members);
/// `groupRef`; 0, after telling the user, where the group was deleted; -1 on an error.
int Group_Check(GroupRef groupRef);
/// Takes the members out of a group's list who were deleted, or whose type was, and tells the user. Results
/// as of Group_Check.
int Group_LeaveOutDeleted(GroupRef groupRef, ListModel &members);
/// Stores the members of a group, without those who were deleted, or whose type was, which the user is told;
/// nothing where `groupRef` is none. Whom another workstation added or removed since `seen` joins or leaves
/// them. Results as of Group_Check, -1 as well where `progress` was cancelled: the group has the members of
/// before then.
int Group_Update(GroupRef groupRef, ListModel &members, SeenMembers &seen, Progress &progress);
/// Tells whom the last write found added or removed elsewhere, if anybody.
void Group_TellElsewhere(const QString &groupName, SeenMembers &seen);
