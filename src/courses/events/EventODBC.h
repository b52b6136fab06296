#pragma once

#include "courses/booking/EventHours.h"
#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QString>

/// Data functions of the dated events of a course, table `CourseEvents`. An event's identity is its EventRef;
/// its `EventNo` is only its place in the course, counted from 1 by date and time, and changes whenever the
/// course's events are listed.

struct CourseEvent {
    EventRef eventRef;
    CourseRef courseRef;
    int eventNo = 0;
    EventHours hours;
    QString description;
};

/// The number that a new event of a series has until the course's events are numbered again, when added to
/// its place in the series: clear of the number of any event that the course has.
inline constexpr int newEventNo = 99999;

/// Adds an event and reads its key back by course and number. No key on an error.
EventRef ADO_Course_AddEvent(CourseRef courseRef, int eventNo, const EventHours &hours);
/// Writes an event's fields; the text comes already safe for SQL. False on an error.
bool ADO_Course_UpdateEvent(EventRef eventRef, int eventNo, const QString &description,
                            const EventHours &hours);
/// Deletes all events of a course with their bookings and attendance, whole or not at all. False on an error.
bool ADO_Course_DeleteEvent_ALL(CourseRef courseRef);
/// Reads the event in that place of the course.
ReadRow<CourseEvent> ADO_Course_ShowEvent(CourseRef courseRef, int eventNo);
/// Reads the event with that key.
ReadRow<CourseEvent> ADO_Course_FindEvent(EventRef eventRef);
/// How many events the course has; 0 on an error.
int ADO_Course_CountEvents(CourseRef courseRef);
/// Numbers the course's events by date and time, from 1. False on an error.
bool RenumberEvents(CourseRef courseRef);
