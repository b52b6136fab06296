#pragma once

#include "courses/events/SeriesRun.h"

/// A date that a series would meet.
struct SeriesDate {
    EventHours hours;
    QString excludedBy; ///< the reference of the period that leaves it out
    bool isExcluded = false;
    QString clashes; ///< the chosen resources that are held then, and by whom
};

struct SeriesPreview {
    std::vector<SeriesDate> dates; ///< the first ones, at most as many as were asked for
    bool goesOn = false;           ///< there are more
    bool isExhausted = false;      ///< the calendar ends before there are as many events as wanted
};

/// What a series for the course would make, at most `most` dates of it. Somebody chosen in two roles is held
/// by the course itself in the second. Reads the bookings of the chosen resources and `Courses`.
SeriesPreview Series_Preview(CourseRef courseRef, const SeriesPlan &plan,
                             const std::vector<SeriesResource> &resources, int most);
