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

/// What a series would make, at most `most` dates of it. Reads the bookings of the chosen resources, one
/// statement for each.
SeriesPreview Series_Preview(const SeriesPlan &plan, const std::vector<SeriesResource> &resources, int most);
