#pragma once

#include "courses/booking/EventHours.h"
#include "database/values/Keys.h"

#include <QString>

/// Data functions of the bookings of events, tables `VenuesEmployed`, `FacilitiesEmployed` and
/// `StaffEmployed`. Each row has its own copy of its event's date and times; its column `EventNo` holds the
/// event's EventRef.

/// The step of everything that is booked. All bookings share one key: with a key for each resource, two saves
/// of many could wait for each other.
inline const QString bookingStep = QStringLiteral("Bookings");

enum class ResourceKind { Venue = 4, Facility = 5 };

/// What a booking returns in place of a course's title when it failed. Screens show it as one.
inline const QString bookingFailed = QStringLiteral("<ERROR>");

/// Books a venue or a facility, in one step: "" if it was booked, otherwise the title of the course that
/// holds it then, whose reference is left in `courseRef`; `bookingFailed` on an error. Where `hours` has no
/// date, the event's are read and left in it for the next booking; an event that is gone books nothing.
QString BookEventResource(ResourceKind kind, CourseRef &courseRef, EventRef eventRef, int itemRef,
                          EventHours &hours);
/// The same for a member of staff, in whatever role he is held. A `contactRef` below 0 is a post that nobody
/// fills yet; it is always booked.
QString ADO_Course_StaffBooking(CourseRef &courseRef, EventRef eventRef, int contactRef,
                                RoleTypeRef roleTypeRef, EventHours &hours);

enum class EventRows { Attendance = 1, Venues = 4, Facilities = 5 };

/// Removes an event's rows of one kind. False on an error.
bool WipeEventRows(EventRows kind, EventRef eventRef, CourseRef courseRef);
/// Removes the staff of one role from an event. False on an error.
bool ADO_Course_WipeStaff(EventRef eventRef, CourseRef courseRef, RoleTypeRef roleTypeRef);
