#pragma once

#include "courses/booking/EventHours.h"
#include "database/values/Keys.h"

#include <QString>

#include <optional>
#include <vector>

/// Data functions of the calendar, which is about one of four kinds of things.
enum class ScheduleKind { Events = 1, Venues = 2, Staff = 3, Facilities = 4 };

/// Something that runs on a day: an event, or a venue, a person or a facility that is booked on one.
struct ScheduleRow {
    CourseRef courseRef;
    EventRef eventRef;
    int eventNo = 0; ///< its place in the course
    EventHours hours;
    QString title; ///< of the course
    QString description;
    int itemRef = 0; ///< of what is booked; below 0 for a post that nobody fills yet
    QString name;    ///< of what is booked
    RoleTypeRef roleRef;
    QString role; ///< of a member of staff
};

/// 1 if anything of the kind runs on the day, otherwise, and on an error, 0.
int ADO_Schedule_EventToday(int date, ScheduleKind kind);
/// What of the kind runs on the day, by the title of the course. Nothing on an error.
std::optional<std::vector<ScheduleRow>> ADO_Schedule_DisplayEvents(int date, ScheduleKind kind);
