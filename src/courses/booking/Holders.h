#pragma once

#include "courses/booking/EventHours.h"
#include "database/values/Keys.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

/// Who holds the resources at the hours of an event, before anything is booked.
namespace Holders
{
enum class Of { Venues, Facilities, Staff };

/// By the reference of the venue, facility or contact: the course that would keep it from being booked at
/// these hours and that booking's times, as "Welding, 09:00 - 10:30"; whoever is missing is free. An event's
/// own bookings do not count, as they are wiped before it is booked again; of its staff only those in `role`,
/// or all where there is none. Reads the bookings of that day and `Courses`. Nothing on an error.
std::optional<QHash<int, QString>> At(Of what, const EventHours &hours, EventRef apartFrom,
                                      RoleTypeRef role = {});
/// How a holder is told: "Welding, 09:00 - 10:30".
QString HolderText(const QString &title, const EventHours &hours);

/// A booking of a resource.
struct Booking {
    EventHours hours;
    QString title; ///< of the course that holds it
};
/// The bookings of one venue, facility or contact from one day (date-int) to another, both included. Reads
/// `Courses` too. Nothing on an error.
std::optional<std::vector<Booking>> Between(Of what, int itemRef, int firstDay, int lastDay);

inline const QString freeText = QStringLiteral("Free");
/// What stands beside a resource in a list: the holder, or "Free".
QString Text(const QHash<int, QString> &holders, int itemRef);
} // namespace Holders
