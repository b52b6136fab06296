#pragma once

#include <QString>

/// A booking that was not made, for the user.
struct BookingClash {
    enum class Of { Venue, Facility, Staff };
    Of what{};
    QString name;  ///< of what was to be booked
    QString title; ///< of the course that holds it
};
