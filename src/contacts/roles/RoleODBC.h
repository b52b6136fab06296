#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

class ComboModel;
class ListModel;

/// Data functions of the roles that people are engaged in; tables `RoleTypes` (what there is) and
/// `ContactRoles` (who holds a role, at what rate and when). Rates are amounts in currency units.

enum class RoleStatus { Active = 1, NotActive = 2 };

/// The fields of one row of `RoleTypes`.
struct RoleType {
    QString name;
    QString description;
    double chargeRate = 0; ///< the rate that somebody new to the role starts with
    RoleStatus status = RoleStatus::Active;
    QString referenceId;
};

/// Adds a role. Texts come already safe for SQL. The new RoleTypeRef, 0 where name and reference exist
/// already already, -1 on an error.
int ADO_Contact_AddRoleType(const RoleType &role);
/// Writes all fields of a role. Texts come already safe for SQL. `roleTypeRef`, 0 where another role has
/// name and reference, -1 on an error.
int ADO_Contact_UpdateRoleType(RoleTypeRef roleTypeRef, const RoleType &role);
/// Reads one role for changing.
ReadRow<RoleType> ADO_Contact_ShowRoleType(RoleTypeRef roleTypeRef);
/// Fills a drop-down list with the roles, all of them or the active ones, the RoleTypeRef as item data and
/// the first one chosen.
void ADO_Contact_FillRoleTypeList(ComboModel &list, bool allTypes);
/// The rate that a role starts with; 0 for a missing row and on an error.
double ADO_Contact_GetRoleChargeRate(RoleTypeRef roleTypeRef);
/// True if a course has the person booked for the role, or anybody where `contactRef` is 0. Reads
/// `CourseStaff`. True on an error as well: what may be in use is not taken away.
bool ADO_Contact_GetRoleInUse(RoleTypeRef roleTypeRef, ContactRef contactRef);

/// Takes all roles from a person. False on an error.
bool ADO_Contact_RolesWipe(ContactRef contactRef);
/// Gives a person a role at a rate, for the time between two date-ints. False on an error.
bool ADO_Contact_AddContactRole(ContactRef contactRef, RoleTypeRef roleTypeRef, double chargeRate,
                                int startDate, int endDate);
/// Deletes a role and takes it from everybody. False on an error.
bool ADO_Contact_DeleteRole(RoleTypeRef roleTypeRef);
/// Fills `list` with the roles of a person, by name: key "?" + RoleTypeRef, the name, the rate with two
/// decimals, first and last day as "DD/MM/YYYY" (today's where none is stored). False on an error: the list
/// may lack roles then.
bool ADO_Contact_GetRoles(ContactRef contactRef, ListModel &list);
