#pragma once

#include "database/values/Keys.h"

class ListModel;

/// Data functions that fill the lists of what is available for an event and what it uses. Rows are keyed "!"
/// and the reference.

/// Fills the list with everybody who has the role, by name: surname, ", " and forename. Reads `Contacts`,
/// `ContactRoles`. False on an error, with the list empty.
bool ADO_Course_FillStaffList(ListModel &list, RoleTypeRef roleTypeRef);

/// Moves what an event uses from `available` to `used`; what is not available does not show. False on an
/// error.
bool ADO_Course_ShowUsedVenues(ListModel &available, ListModel &used, CourseRef courseRef, EventRef eventRef);
bool ADO_Course_ShowUsedFacilities(ListModel &available, ListModel &used, CourseRef courseRef,
                                   EventRef eventRef);
/// The same for the staff of one role. No event (0) means the course's own staff, table `CourseStaff`, where
/// a post that nobody fills shows under the key "-" and its number.
bool ADO_Course_ShowUsedStaff(ListModel &available, ListModel &used, CourseRef courseRef,
                              RoleTypeRef roleTypeRef, EventRef eventRef);

/// How a post that nobody fills yet is shown, by its `contactRef`, which is below 0.
QString OpenPostName(int contactRef);

/// The role of one of the event's staff; none (0) where it has no staff, and on an error.
RoleTypeRef ADO_Course_RoleOnEvent(CourseRef courseRef, EventRef eventRef);
