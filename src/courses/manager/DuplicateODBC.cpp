#include "courses/manager/DuplicateODBC.h"

#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "enrolment/EnrolmentODBC.h"
#include "platform/connection/Connection.h"

namespace
{
/// Copies what `select` gives of `columns`, which hold numbers, behind the values in `first` of each new row.
void CopyRows(const QString &select, const QString &insert, const QString &first, const QStringList &columns)
{
    for (const auto &row : OpenRecordset(select)) {
        QString values = first;
        for (const QString &column : columns)
            values += u',' % SqlNumber(row.Long(column));
        Execute(insert % u" VALUES (" % values % u')');
    }
}

bool CopyOfCourse(const char *routineName, QStringView table, const QStringList &columns,
                  QStringView selected, CourseRef source, CourseRef target)
{
    return Reported(routineName, false, [&] {
        WriteGroup group(gConnection);
        CopyRows(u"SELECT " % selected % u" FROM " % table % u" WHERE CourseRef = " % SqlNumber(source),
                 u"INSERT INTO " % table % u" (CourseRef, " % columns.join(QStringLiteral(", ")) % u')',
                 SqlNumber(target), columns);
        EndRows(group);
        return true;
    });
}

/// An event and its copy.
struct EventPair {
    EventRef original;
    CourseRef target;
    EventRef copy;
};

void CopyOfEvent(const EventPair &events, const QString &table, const QStringList &columns)
{
    CopyRows(u"SELECT * FROM " % table % u" WHERE EventNo = " % SqlNumber(events.original),
             u"INSERT INTO " % table % u" (CourseRef,EventNo," % columns.join(u',') % u')',
             SqlNumber(events.target) % u',' % SqlNumber(events.copy), columns);
}

void CopyBookings(const EventPair &events, int options)
{
    const QStringList hours{QStringLiteral("EDate"), QStringLiteral("TimeFrom"), QStringLiteral("TimeTo")};
    CopyOfEvent(events, QStringLiteral("AttendanceRecord"), {QStringLiteral("ContactRef")});
    if (options & DupeVenues)
        CopyOfEvent(events, QStringLiteral("VenuesEmployed"),
                    QStringList(QStringLiteral("VenueRef")) + hours);
    if (options & DupeStaff)
        CopyOfEvent(events, QStringLiteral("StaffEmployed"),
                    QStringList{QStringLiteral("ContactRef"), QStringLiteral("RoleTypeRef")} + hours);
    if (options & DupeFacilities)
        CopyOfEvent(events, QStringLiteral("FacilitiesEmployed"),
                    QStringList(QStringLiteral("FacilityRef")) + hours);
}

/// The new event; 0 if it cannot be found again.
EventRef CopyEvent(const Recordset::Row &event, CourseRef target)
{
    const QString eventNo = SqlNumber(event.Long(u"EventNo"));
    Execute(u"INSERT INTO CourseEvents (CourseRef,EventNo,EDate,TimeFrom,TimeTo) VALUES (" %
            SqlNumber(target) % u',' % eventNo % u',' % SqlNumber(event.Long(u"EDate")) % u',' %
            SqlNumber(event.Long(u"TimeFrom")) % u',' % SqlNumber(event.Long(u"TimeTo")) % u')');
    return EventRef(ReadKey(u"SELECT * FROM CourseEvents WHERE EventNo = " % eventNo % u" AND CourseRef = " %
                                SqlNumber(target),
                            u"EventRef"));
}
} // namespace

int ADO_Course_DupeCourse(CourseRef source, const QString &title)
{
    return Reported("ADO_Course_DupeCourse", -1, [&] {
        return InOneStep(QStringLiteral("Courses"), [&] {
            if (HasRow(u"SELECT * FROM Courses WHERE Title = '" % title % u'\''))
                return 0;
            const Recordset courses =
                OpenRecordset(u"SELECT * FROM Courses WHERE CourseRef = " % SqlNumber(source));
            if (courses.IsEmpty())
                return -1;
            const auto course = courses.First();
            const QString referenceID = DoubledApostrophes(course.Text(u"ReferenceID"));
            Execute(u"INSERT INTO Courses (Title,Description,Fee,Limit,ReferenceID) VALUES ('" % title %
                    u"','" % DoubledApostrophes(course.Text(u"Description")) % u"'," %
                    SqlNumber(course.Double(u"Fee")) % u',' % SqlNumber(course.Long(u"Limit")) % u",'" %
                    referenceID % u"')");
            return ReadKey(u"SELECT * FROM Courses WHERE Title = '" % title % u"' AND ReferenceID = '" %
                               referenceID % u'\'',
                           u"CourseRef");
        });
    });
}

bool ADO_Course_DupeChar(CourseRef source, CourseRef target)
{
    return CopyOfCourse("ADO_Course_DupeChar", u"CourseChar", {QStringLiteral("ConcessionRef")}, u"*", source,
                        target);
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): from the one to the other, as with copies of files.
bool ADO_Course_DupeEvents(CourseRef source, CourseRef target, int options)
{
    return Reported("ADO_Course_DupeEvents", false, [&] {
        WriteGroup group(gConnection);
        for (const auto &event :
             OpenRecordset(u"SELECT * FROM CourseEvents WHERE CourseRef = " % SqlNumber(source))) {
            const EventRef original(static_cast<int>(event.Long(u"EventRef")));
            if (const EventRef copy = CopyEvent(event, target))
                CopyBookings({original, target, copy}, options);
        }
        EndRows(group);
        return true;
    });
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): as above.
bool ADO_Course_DupeStudentsEnrolled(CourseRef source, CourseRef target)
{
    return Reported("ADO_Course_DupeStudentsEnrolled", false, [&] {
        WriteGroup group(gConnection);
        for (const auto &student : OpenRecordset(
                 u"SELECT ContactRef FROM StudentsEnrolled WHERE CourseRef = " % SqlNumber(source))) {
            const ContactRef contactRef(static_cast<int>(student.Long(u"ContactRef")));
            if (ADO_Course_EnrollStudent(target, contactRef) != EnrolmentChange::Done)
                return false;
        }
        EndRows(group);
        return true;
    });
}

bool ADO_Course_DupeStaff(CourseRef source, CourseRef target)
{
    return CopyOfCourse("ADO_Course_DupeStaff", u"CourseStaff",
                        {QStringLiteral("ContactRef"), QStringLiteral("RoleTypeRef")}, u"*", source, target);
}

bool ADO_Course_DupeHierarchy(CourseRef source, CourseRef target)
{
    return CopyOfCourse("ADO_Course_DupeHierarchy", u"CoursesRelationships",
                        {QStringLiteral("CourseHierarchyRef")}, u"*", source, target);
}

bool ADO_Course_DupeFacilities(CourseRef source, CourseRef target)
{
    return CopyOfCourse("ADO_Course_DupeFacilities", u"CourseFacilities", {QStringLiteral("FacilityRef")},
                        u"FacilityRef", source, target);
}

bool ADO_Course_DupeVenues(CourseRef source, CourseRef target)
{
    return CopyOfCourse("ADO_Course_DupeVenues", u"CourseVenues", {QStringLiteral("VenueRef")}, u"VenueRef",
                        source, target);
}
