#pragma once

#include "core/session/Progress.h"
#include "courses/booking/BookingModule.h"
#include "courses/booking/EventHours.h"
#include "courses/events/EventSeries.h"
#include "database/values/Keys.h"

#include <QString>

#include <vector>

class TreeModel;

/// A resource that is booked on every event of a series.
struct SeriesResource {
    BookingClash::Of what{};
    int itemRef = 0; ///< venue, facility or contact; below 0 a post that nobody fills
    RoleTypeRef roleTypeRef{};
    QString name;
};

/// The facilities, staff and venues of a tree whose only event stands for all of a series.
std::vector<SeriesResource> Series_Resources(const TreeModel &tree);

/// Leaves out what another workstation deleted, and tells the user the names. False on an error: nothing is
/// left out then.
bool Series_LeaveOutDeleted(std::vector<SeriesResource> &resources, const QString &title);

/// An event of a series that lacks some of its resources.
struct UnbookedEvent {
    int number = 0; ///< its place in the series, from 1
    EventHours hours;
    std::vector<BookingClash> clashes;
};

struct SeriesMade {
    int events = 0; ///< how many were made
    std::vector<UnbookedEvent> unbooked;
    bool isExhausted = false; ///< the calendar ended before as many were made as were wanted
};

/// Adds the events of a series to a course and books the resources on each. The user is told at once of each
/// event that lacks some; it stays, and the series goes on. An event is kept with all of its bookings or not
/// at all; what was made before a failure or before `progress` was cancelled stays.
SeriesMade Series_Make(CourseRef courseRef, const SeriesPlan &plan,
                       const std::vector<SeriesResource> &resources, Progress &progress);
