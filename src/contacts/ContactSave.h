#pragma once

#include "contacts/ContactRecord.h"
#include "database/WholeSave.h"

class ListModel;
class TreeModel;

/// The lists of a person's screen that are stored with the person.
struct ContactLists {
    ListModel &characteristics;
    ListModel &roles;
    TreeModel &attributes;
    int groupRef = 0; ///< the group whose members were changed; 0 = none
    ListModel &members;
};

/// Takes the characteristics, roles and attributes that were deleted out of the lists, and tells the user.
/// False on an error.
bool Contact_LeaveOutDeleted(const ContactLists &lists);
/// Stores a person as typed, added where `contactRef` is 0, with the lists in place of what the person and
/// the group had, in one piece. The user is told where the person exists.
RecordSaved Contact_Save(int contactRef, const ContactRecord &record, const ContactLists &lists,
                         Progress &progress);
