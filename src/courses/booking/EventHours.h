#pragma once

#include <QString>

/// When an event or a booking runs: a date-int (0 = no date) and two time-ints.
struct EventHours {
    int date = 0;
    int from = 0;
    int to = 0;

    bool operator==(const EventHours &) const = default;
};

/// "09:00 - 10:30" of two time-ints.
QString TimesText(int from, int to);

/// The one rule of clashes: whether a booking that is held from `from` to `to` keeps the same resource from
/// being booked with a start at `start` on the same day. Both ends count; when the new booking ends does not,
/// so that a whole day passes beside a lesson in the middle of it.
constexpr bool Clashes(int start, int from, int to)
{
    return start >= from && start <= to;
}
