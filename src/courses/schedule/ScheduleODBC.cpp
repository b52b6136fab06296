#include "courses/schedule/ScheduleODBC.h"

#include "courses/booking/UsedResourcesODBC.h"
#include "database/statements/MiscODBC.h"

namespace
{
int Number(const Recordset::Row &row, QStringView column)
{
    return static_cast<int>(row.Long(column));
}

QStringView BookingsOf(ScheduleKind kind)
{
    switch (kind) {
    case ScheduleKind::Venues:
        return u"VenuesEmployed";
    case ScheduleKind::Staff:
        return u"StaffEmployed";
    case ScheduleKind::Facilities:
        return u"FacilitiesEmployed";
    case ScheduleKind::Events:
        break;
    }
    return u"CourseEvents";
}

ScheduleRow EventOf(const Recordset::Row &row)
{
    ScheduleRow event;
    event.courseRef = CourseRef(Number(row, u"CourseRef"));
    event.eventRef = EventRef(Number(row, u"EventRef"));
    event.eventNo = Number(row, u"EventNo");
    event.hours = {Number(row, u"EDate"), Number(row, u"TimeFrom"), Number(row, u"TimeTo")};
    event.title = row.Text(u"Title");
    event.description = row.Text(u"Description");
    return event;
}

/// The condition that ties bookings of `table` to an event; their column EventNo holds its EventRef.
QString OfEvent(QStringView table, const ScheduleRow &event)
{
    return u" WHERE " % table % u".CourseRef = " % SqlNumber(event.courseRef) % u" AND " % table %
           u".EventNo = " % SqlNumber(event.eventRef);
}

void AddItems(std::vector<ScheduleRow> &rows, const ScheduleRow &event, const QString &sql,
              QStringView nameColumn, QStringView keyColumn)
{
    for (const auto &item : OpenRecordset(sql)) {
        ScheduleRow row = event;
        row.name = item.Text(nameColumn);
        row.itemRef = Number(item, keyColumn);
        rows.push_back(std::move(row));
    }
}

void AddVenues(std::vector<ScheduleRow> &rows, const ScheduleRow &event)
{
    AddItems(rows, event,
             u"SELECT Venues.Description, Venues.VenueRef FROM VenuesEmployed INNER JOIN Venues ON "
             u"VenuesEmployed.VenueRef =Venues.VenueRef" %
                 OfEvent(u"VenuesEmployed", event),
             u"Description", u"VenueRef");
}

void AddFacilities(std::vector<ScheduleRow> &rows, const ScheduleRow &event)
{
    AddItems(rows, event,
             u"SELECT Facilities.Name, Facilities.FacilityRef FROM FacilitiesEmployed INNER JOIN Facilities "
             u"ON FacilitiesEmployed.FacilityRef = Facilities.FacilityRef" %
                 OfEvent(u"FacilitiesEmployed", event),
             u"Name", u"FacilityRef");
}

ScheduleRow StaffRow(ScheduleRow row, const Recordset::Row &staff, const QString &name)
{
    row.name = name;
    row.itemRef = Number(staff, u"ContactRef");
    row.roleRef = RoleTypeRef(Number(staff, u"RoleTypeRef"));
    row.role = staff.Text(u"Name");
    return row;
}

/// The people, and then the posts that nobody fills yet, who have no contact to be joined with.
void AddStaff(std::vector<ScheduleRow> &rows, const ScheduleRow &event)
{
    const QString ofEvent = OfEvent(u"StaffEmployed", event);
    for (const auto &staff : OpenRecordset(
             u"SELECT Contacts.ContactRef, Contacts.Cust_Forename, Contacts.Cust_Surname, "
             u"RoleTypes.RoleTypeRef, RoleTypes.Name FROM RoleTypes INNER JOIN (Contacts INNER JOIN "
             u"StaffEmployed ON Contacts.ContactRef = StaffEmployed.ContactRef) ON RoleTypes.RoleTypeRef = "
             u"StaffEmployed.RoleTypeRef" %
             ofEvent))
        rows.push_back(
            StaffRow(event, staff, staff.Text(u"Cust_Forename") % u' ' % staff.Text(u"Cust_Surname")));
    for (const auto &post : OpenRecordset(
             u"SELECT StaffEmployed.ContactRef, RoleTypes.Name, RoleTypes.RoleTypeRef FROM StaffEmployed "
             u"INNER JOIN RoleTypes ON StaffEmployed.RoleTypeRef = RoleTypes.RoleTypeRef" %
             ofEvent % u" AND StaffEmployed.ContactRef <0"))
        rows.push_back(StaffRow(event, post, OpenPostName(Number(post, u"ContactRef"))));
}
} // namespace

int ADO_Schedule_EventToday(int date, ScheduleKind kind)
{
    return Reported("ADO_Schedule_EventToday", 0, [&] {
        return HasRow(u"SELECT * FROM " % BookingsOf(kind) % u" WHERE EDate = " % SqlNumber(date)) ? 1 : 0;
    });
}

std::optional<std::vector<ScheduleRow>> ADO_Schedule_DisplayEvents(int date, ScheduleKind kind)
{
    using Rows = std::vector<ScheduleRow>;
    return Reported("ADO_Schedule_DisplayEvents", std::optional<Rows>(), [&] {
        Rows rows;
        for (const auto &row :
             OpenRecordset(u"SELECT Courses.Title, CourseEvents.* FROM CourseEvents INNER JOIN Courses ON "
                           u"CourseEvents.CourseRef = Courses.CourseRef WHERE EDate = " %
                           SqlNumber(date) % u" ORDER BY Courses.Title ASC")) {
            const ScheduleRow event = EventOf(row);
            switch (kind) {
            case ScheduleKind::Events:
                rows.push_back(event);
                break;
            case ScheduleKind::Venues:
                AddVenues(rows, event);
                break;
            case ScheduleKind::Staff:
                AddStaff(rows, event);
                break;
            case ScheduleKind::Facilities:
                AddFacilities(rows, event);
                break;
            }
        }
        return std::optional(std::move(rows));
    });
}
