#pragma once

#include "contacts/roles/RoleODBC.h"
#include "database/values/Keys.h"

/// The logic of roles: makes texts safe for SQL, speaks to the user, and keeps the list of a person's roles
/// (rows as of ADO_Contact_GetRoles) until the person is saved.

/// Adds a role as typed. The new RoleTypeRef; 0, after telling the user, where name and reference exist; -1
/// on an error.
int RoleType_Add(const RoleType &role);
/// Writes a role as typed; results as of RoleType_Add, 0 as well where the role was deleted.
int RoleType_Update(RoleTypeRef roleTypeRef, const RoleType &role);
/// False, after telling the user, where somebody is booked for the role, which `text` names.
bool RoleType_MayDelete(RoleTypeRef roleTypeRef, const QString &text);

/// One row of a person's roles.
struct ContactRole {
    RoleTypeRef roleTypeRef;
    QString name;
    double chargeRate = 0;
    int startDate = 0; ///< date-int
    int endDate = 0;   ///< date-int
};

ContactRole Role_Of(const ListModel &roles, int row);
/// Adds a role to the list. Where it is there the user is asked whether to change its rate and dates.
void Role_AddToList(const ContactRole &role, ListModel &roles);
/// Takes the selected roles out of the list, each after a question. One that the person is booked for
/// stays; the user may have it end today.
void Role_RemoveSelected(ContactRef contactRef, ListModel &roles);
/// Takes the roles that were deleted out of a list, and tells the user. False on an error.
bool Role_LeaveOutDeleted(ListModel &roles);
/// Makes the roles of a person those of the list. False if the person may have fewer of them now.
bool Role_Store(ContactRef contactRef, const ListModel &roles);
