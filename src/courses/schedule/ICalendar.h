#pragma once

#include "courses/schedule/ScheduleODBC.h"

#include <QByteArray>
#include <QDateTime>

/// Calendars in the form that telephones and mail programs read (RFC 5545, iCalendar).
namespace ICalendar
{
/// An entry for each row. Times are floating, so that they are the same everywhere. The UID of a row is made
/// of the keys of its event and of what is booked: a later export of the same row replaces it. `written` is
/// the moment of the export.
QByteArray Text(const std::vector<ScheduleRow> &rows, ScheduleKind kind, const QDateTime &written);
} // namespace ICalendar
