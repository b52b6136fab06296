#include "courses/schedule/ICalendar.h"

#include "database/values/DecodeDateFunc.h"

#include <libical/ical.h>

#include <memory>

namespace
{
using Component = std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)>;

QString UidOf(const ScheduleRow &row, ScheduleKind kind)
{
    QString uid = u"event-" % SqlNumber(row.eventRef);
    if (kind == ScheduleKind::Venues)
        uid += u"-venue-" % SqlNumber(row.itemRef);
    else if (kind == ScheduleKind::Facilities)
        uid += u"-facility-" % SqlNumber(row.itemRef);
    else if (kind == ScheduleKind::Staff)
        uid += u"-staff-" % SqlNumber(row.itemRef) % u"-role-" % SqlNumber(row.roleRef);
    return uid % u"@veltrane";
}

QString SummaryOf(const ScheduleRow &row, ScheduleKind kind)
{
    switch (kind) {
    case ScheduleKind::Facilities:
        return row.title % u": " % row.name;
    case ScheduleKind::Staff:
        return row.title % u" (" % row.role % u": " % row.name % u')';
    default:
        return row.title;
    }
}

icaltimetype Floating(const EventHours &hours, int time)
{
    const QDate day = IntToDate(hours.date);
    icaltimetype moment = icaltime_null_time();
    moment.year = day.year();
    moment.month = day.month();
    moment.day = day.day();
    moment.hour = TimeHours(time);
    moment.minute = TimeMinutes(time);
    return moment;
}

void AddEntry(icalcomponent *calendar, const ScheduleRow &row, ScheduleKind kind, icaltimetype written)
{
    const QByteArray description = row.description.toUtf8();
    icalcomponent *entry = icalcomponent_new_vevent();
    icalcomponent_set_uid(entry, UidOf(row, kind).toUtf8().constData());
    icalcomponent_set_dtstamp(entry, written);
    icalcomponent_set_dtstart(entry, Floating(row.hours, row.hours.from));
    // An entry without an end lasts no time; one that ended where it starts would be refused.
    if (row.hours.to > row.hours.from)
        icalcomponent_set_dtend(entry, Floating(row.hours, row.hours.to));
    icalcomponent_set_summary(entry, SummaryOf(row, kind).toUtf8().constData());
    if (!description.isEmpty())
        icalcomponent_set_description(entry, description.constData());
    if (kind == ScheduleKind::Venues)
        icalcomponent_set_location(entry, row.name.toUtf8().constData());
    icalcomponent_add_component(calendar, entry);
}
} // namespace

QByteArray ICalendar::Text(const std::vector<ScheduleRow> &rows, ScheduleKind kind, const QDateTime &written)
{
    const Component calendar(icalcomponent_new_vcalendar(), icalcomponent_free);
    icalcomponent_add_property(calendar.get(), icalproperty_new_version("2.0"));
    icalcomponent_add_property(calendar.get(), icalproperty_new_prodid("-//Veltrane//Calendar//EN"));
    const icaltimetype stamp =
        icaltime_from_timet_with_zone(written.toSecsSinceEpoch(), 0, icaltimezone_get_utc_timezone());
    for (const ScheduleRow &row : rows) {
        if (IntToDate(row.hours.date).isValid())
            AddEntry(calendar.get(), row, kind, stamp);
    }
    const std::unique_ptr<char, decltype(&free)> text(icalcomponent_as_ical_string_r(calendar.get()), free);
    return QByteArray(text.get());
}
