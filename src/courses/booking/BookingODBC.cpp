#include "courses/booking/BookingODBC.h"

#include "database/statements/MiscODBC.h"

namespace
{
/// Fills in the event's hours where the caller has none. False if there is no such event any more.
bool ReadHours(EventRef eventRef, EventHours &hours)
{
    if (hours.date != 0)
        return true;
    const Recordset event =
        OpenRecordset(u"SELECT * FROM CourseEvents WHERE EventRef = " % SqlNumber(eventRef));
    if (event.IsEmpty())
        return false;
    hours = {static_cast<int>(event.First().Long(u"EDate")),
             static_cast<int>(event.First().Long(u"TimeFrom")),
             static_cast<int>(event.First().Long(u"TimeTo"))};
    return true;
}

/// The course of the first of these bookings that clashes; no course if none does.
CourseRef ClashingCourse(const QString &bookings, const EventHours &hours)
{
    for (const auto &row : OpenRecordset(bookings)) {
        if (Clashes(hours.from, static_cast<int>(row.Long(u"TimeFrom")),
                    static_cast<int>(row.Long(u"TimeTo"))))
            return CourseRef(static_cast<int>(row.Long(u"CourseRef")));
    }
    return {};
}

QString TitleOf(CourseRef courseRef)
{
    const Recordset course =
        OpenRecordset(u"SELECT Title FROM Courses WHERE CourseRef = " % SqlNumber(courseRef));
    const QString title = course.IsEmpty() ? QString() : course.First().Text(u"Title");
    // An empty title would pass for a booking that was made.
    return title.isEmpty() ? bookingFailed : title;
}

QString HoursText(const EventHours &hours)
{
    return SqlNumber(hours.date) % u',' % SqlNumber(hours.from) % u',' % SqlNumber(hours.to) % u')';
}

QString ADO_Course_EventBooking(CourseRef &courseRef, EventRef eventRef, int itemRef, EventHours &hours,
                                QStringView table, QStringView field)
{
    return Reported("ADO_Course_EventBooking", bookingFailed, [&] {
        return InOneStep(bookingStep, [&]() -> QString {
            if (!ReadHours(eventRef, hours))
                return bookingFailed;
            const QString item = SqlNumber(itemRef);
            if (const CourseRef holder =
                    ClashingCourse(u"SELECT * FROM " % table % u" WHERE EDate = " % SqlNumber(hours.date) %
                                       u" AND " % field % u" = " % item,
                                   hours)) {
                courseRef = holder;
                return TitleOf(holder);
            }
            Execute(u"INSERT INTO " % table % u" (CourseRef,EventNo," % field %
                    u",EDate,TimeFrom,TimeTo) VALUES (" % SqlNumber(courseRef) % u',' % SqlNumber(eventRef) %
                    u',' % item % u',' % HoursText(hours));
            return {};
        });
    });
}

QStringView TableOf(EventRows kind)
{
    switch (kind) {
    case EventRows::Attendance:
        return u"AttendanceRecord";
    case EventRows::Venues:
        return u"VenuesEmployed";
    case EventRows::Facilities:
        return u"FacilitiesEmployed";
    }
    return {};
}
} // namespace

QString BookEventResource(ResourceKind kind, CourseRef &courseRef, EventRef eventRef, int itemRef,
                          EventHours &hours)
{
    return kind == ResourceKind::Venue
               ? ADO_Course_EventBooking(courseRef, eventRef, itemRef, hours, u"VenuesEmployed", u"VenueRef")
               : ADO_Course_EventBooking(courseRef, eventRef, itemRef, hours, u"FacilitiesEmployed",
                                         u"FacilityRef");
}

QString ADO_Course_StaffBooking(CourseRef &courseRef, EventRef eventRef, int contactRef,
                                RoleTypeRef roleTypeRef, EventHours &hours)
{
    return Reported("ADO_Course_StaffBooking", bookingFailed, [&] {
        return InOneStep(bookingStep, [&]() -> QString {
            if (!ReadHours(eventRef, hours))
                return bookingFailed;
            const bool isPost = contactRef < 0;
            const CourseRef holder =
                isPost
                    ? CourseRef()
                    : ClashingCourse(u"SELECT * FROM StaffEmployed WHERE EDate = " % SqlNumber(hours.date) %
                                         u" AND ContactRef  = " % SqlNumber(contactRef),
                                     hours);
            if (holder) {
                courseRef = holder;
                return TitleOf(holder);
            }
            Execute(u"INSERT INTO StaffEmployed (CourseRef,EventNo,ContactRef,RoleTypeRef,EDate,TimeFrom,"
                    u"TimeTo) VALUES (" %
                    SqlNumber(courseRef) % u',' % SqlNumber(eventRef) % u',' % SqlNumber(contactRef) % u',' %
                    SqlNumber(roleTypeRef) % u',' % HoursText(hours));
            return {};
        });
    });
}

bool WipeEventRows(EventRows kind, EventRef eventRef, CourseRef courseRef)
{
    return Reported("ADO_Course_EventWipe", false, [&] {
        Execute(u"DELETE FROM " % TableOf(kind) % u" WHERE EventNo = " % SqlNumber(eventRef) %
                u" AND CourseRef = " % SqlNumber(courseRef));
        return true;
    });
}

bool ADO_Course_WipeStaff(EventRef eventRef, CourseRef courseRef, RoleTypeRef roleTypeRef)
{
    return Reported("ADO_Course_WipeStaff", false, [&] {
        Execute(u"DELETE FROM StaffEmployed WHERE EventNo = " % SqlNumber(eventRef) % u" AND CourseRef = " %
                SqlNumber(courseRef) % u" AND RoleTypeRef = " % SqlNumber(roleTypeRef));
        return true;
    });
}
