#pragma once

#include "contacts/groups/GroupODBC.h"
#include "contacts/record/ContactVersion.h"
#include "database/statements/WholeSave.h"
#include "database/values/Keys.h"

/// The group whose members were changed on a person's screen.
struct ChangedGroup {
    GroupRef groupRef; ///< 0 = none
    ListModel &members;
    SeenMembers &seen;
};

/// Takes the characteristics, roles and attributes that were deleted out of the lists, and tells the user.
/// False on an error.
bool Contact_LeaveOutDeleted(const ContactLists &lists);
/// Stores a person as typed, added where `contactRef` is 0, with the lists in place of what the person and
/// the group had, in one piece. The user is told where the person exists. What another workstation changed
/// since `base` was read is joined as of Contact_Update.
RecordSaved Contact_Save(ContactRef contactRef, ContactRecord &record, const ContactLists &lists,
                         const ChangedGroup &group, FieldValues &base, Progress &progress);
