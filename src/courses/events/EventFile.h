#pragma once

#include "controls/ListModel.h"
#include "courses/events/EventODBC.h"
#include "database/statements/RecordMerge.h"
#include "database/statements/WholeSave.h"

/// An event with the lists of its screen.
struct EventFile {
    CourseEvent event;
    RoleTypeRef role; ///< whose staff the two lists hold; 0 = none

    ListModel students; ///< of the course, and who else came; those who attended are ticked
    ListModel venuesAvailable;
    ListModel venues;
    ListModel facilitiesAvailable;
    ListModel facilities;
    ListModel staffAvailable;
    ListModel staff;

    /// What is stored, as the screen was filled from it; empty = not known.
    FieldValues seen;
};

enum class EventRead { Found, Gone, Failed };

/// Reads the event in that place of the course, with its lists. The role is that of one of its staff, or
/// `firstRole` where it has none.
EventRead Event_Show(EventFile &file, CourseRef courseRef, int eventNo, RoleTypeRef firstRole);
/// Reads the staff of another role. False on an error: the lists may then lack people.
bool Event_ShowRole(EventFile &file, RoleTypeRef role);

/// Reads again who is on the course and who attended. False on an error.
bool Event_ShowStudents(EventFile &file);

/// Stores the event with its date, times and text, books what its lists hold, and notes who attended; whole
/// or not at all. What another workstation changed since it was read is joined; the user settles what both
/// changed. Venues, facilities and people that were deleted meanwhile are left out, and the user is told of
/// them and of every booking that was not made. Staff of other roles keep the bookings they have. A key of 0
/// says that the event is gone.
RecordSaved Event_Save(EventFile &file);
