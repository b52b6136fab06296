#pragma once

#include "courses/booking/BookingClash.h"

/// Tells the user of a booking that was not made. Without a `title` the box has that of its kind.
void TellClash(const BookingClash &clash, const QString &title = {});
