#include "courses/events/EventODBC.h"

#include "core/session/Session.h"
#include "courses/booking/BookingODBC.h"
#include "database/statements/MiscODBC.h"
#include "platform/connection/Connection.h"

namespace
{
CourseEvent EventOf(const Recordset::Row &row)
{
    const auto number = [&](QStringView column) { return static_cast<int>(row.Long(column)); };
    return {EventRef(number(u"EventRef")),
            CourseRef(number(u"CourseRef")),
            number(u"EventNo"),
            {number(u"EDate"), number(u"TimeFrom"), number(u"TimeTo")},
            row.Text(u"Description")};
}
} // namespace

EventRef ADO_Course_AddEvent(CourseRef courseRef, int eventNo, const EventHours &hours)
{
    return Reported("ADO_Course_AddEvent", EventRef(), [&] {
        // In the step of the bookings: a save of the whole course deletes the events that it has not read.
        return InOneStep(bookingStep, [&] {
            Execute(u"INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES (" %
                    SqlNumber(courseRef) % u',' % SqlNumber(eventNo) % u',' % SqlNumber(hours.date) % u',' %
                    SqlNumber(hours.from) % u',' % SqlNumber(hours.to) % u')');
            return EventRef(ReadKey(u"SELECT EventRef FROM CourseEvents WHERE EventNo = " %
                                        SqlNumber(eventNo) % u" AND CourseRef = " % SqlNumber(courseRef),
                                    u"EventRef"));
        });
    });
}

bool ADO_Course_UpdateEvent(EventRef eventRef, int eventNo, const QString &description,
                            const EventHours &hours)
{
    return Reported("ADO_Course_UpdateEvent", false, [&] {
        Execute(u"UPDATE CourseEvents SET EventNo = " % SqlNumber(eventNo) % u", Description = '" %
                description % u"', EDate = " % SqlNumber(hours.date) % u", TimeFrom = " %
                SqlNumber(hours.from) % u", TimeTo = " % SqlNumber(hours.to) % u" WHERE EventRef = " %
                SqlNumber(eventRef));
        return true;
    });
}

bool ADO_Course_DeleteEvent_ALL(CourseRef courseRef)
{
    return RunWithKey(
        "ADO_Course_DeleteEvent_ALL",
        {u"DELETE FROM StaffEmployed WHERE CourseRef = ", u"DELETE FROM AttendanceRecord WHERE CourseRef = ",
         u"DELETE FROM FacilitiesEmployed WHERE CourseRef = ",
         u"DELETE FROM VenuesEmployed WHERE CourseRef = ", u"DELETE FROM CourseEvents WHERE CourseRef = "},
        courseRef.number);
}

ReadRow<CourseEvent> ADO_Course_ShowEvent(CourseRef courseRef, int eventNo)
{
    return ReadOne<CourseEvent>("ADO_Course_ShowEvent",
                                u"SELECT * FROM CourseEvents WHERE CourseRef = " % SqlNumber(courseRef) %
                                    u" AND EventNo = " % SqlNumber(eventNo),
                                EventOf);
}

ReadRow<CourseEvent> ADO_Course_FindEvent(EventRef eventRef)
{
    return ReadOne<CourseEvent>("ADO_Course_FindEvent",
                                u"SELECT * FROM CourseEvents WHERE EventRef = " % SqlNumber(eventRef),
                                EventOf);
}

int ADO_Course_CountEvents(CourseRef courseRef)
{
    return Reported("ADO_Course_CountEvents", 0, [&] {
        return OpenRecordset(u"SELECT CourseRef FROM CourseEvents WHERE CourseRef = " % SqlNumber(courseRef))
            .RowCount();
    });
}

bool RenumberEvents(CourseRef courseRef)
{
    return Reported("RenumberEvents", false, [&] {
        WriteGroup group(gConnection);
        int eventNo = 0;
        for (const auto &row : OpenRecordset(u"SELECT EventRef FROM CourseEvents WHERE CourseRef = " %
                                             SqlNumber(courseRef) % u" ORDER BY EDate,TimeFrom ASC"))
            Execute(u"UPDATE CourseEvents SET EventNo = " % SqlNumber(++eventNo) % u" WHERE EventRef = " %
                    row.Text(u"EventRef"));
        EndRows(group);
        return true;
    });
}
