#include "courses/events/AttendanceODBC.h"

#include "controls/ListModel.h"
#include "courses/lists/SelectionMatch.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

namespace
{
QString OfEvent(CourseRef courseRef, EventRef eventRef)
{
    return u" FROM AttendanceRecord WHERE CourseRef = " % SqlNumber(courseRef) % u" AND EventNo = " %
           SqlNumber(eventRef);
}

QString IsThere(CourseRef courseRef, EventRef eventRef, const QString &contactRef)
{
    return u"SELECT ContactRef FROM AttendanceRecord WHERE CourseRef = " % SqlNumber(courseRef) %
           u" AND ContactRef = " % contactRef % u" AND EventNo = " % SqlNumber(eventRef);
}

QString Insert(CourseRef courseRef, EventRef eventRef, const QString &contactRef)
{
    return u"INSERT INTO AttendanceRecord (CourseRef,ContactRef,EventNo) VALUES (" % SqlNumber(courseRef) %
           u',' % contactRef % u',' % SqlNumber(eventRef) % u')';
}
} // namespace

bool ADO_Course_StudentAttended(CourseRef courseRef, EventRef eventRef, ContactRef contactRef)
{
    const QString contact = SqlNumber(contactRef);
    return Reported("ADO_Course_StudentAttended", false, [&] {
        return InOneStep(attendanceStep, [&] {
            if (!HasRow(IsThere(courseRef, eventRef, contact)))
                Execute(Insert(courseRef, eventRef, contact));
            return true;
        });
    });
}

bool ADO_Course_ShowAttendedStudents(CourseRef courseRef, EventRef eventRef, ListModel &students)
{
    return Reported("ADO_Course_ShowAttendedStudents", false, [&] {
        for (const auto &row : OpenRecordset(
                 u"SELECT AttendanceRecord.ContactRef, Contacts.Cust_Surname, Contacts.Cust_Forename FROM "
                 u"AttendanceRecord INNER JOIN Contacts ON AttendanceRecord.ContactRef = Contacts.ContactRef "
                 u"WHERE AttendanceRecord.CourseRef = " %
                 SqlNumber(courseRef) % u" AND AttendanceRecord.EventNo = " % SqlNumber(eventRef))) {
            const QString key = u'?' % row.Text(u"ContactRef");
            int at = students.Find(key);
            if (at < 0)
                at = students.Add({key,
                                   row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename"),
                                   {QStringLiteral("Not Enrolled")}});
            students.SetChecked(at, true);
        }
        return true;
    });
}

std::optional<QStringList> ADO_Course_AttendedKeys(CourseRef courseRef, EventRef eventRef)
{
    return Reported("ADO_Course_AttendedKeys", std::optional<QStringList>(),
                    [&] { return StoredKeys(u"SELECT ContactRef" % OfEvent(courseRef, eventRef)); });
}

bool ADO_Course_Attended(CourseRef courseRef, EventRef eventRef, const ListModel &selected,
                         const QSet<QString> &known, Progress &progress)
{
    const QString ofEvent = OfEvent(courseRef, eventRef);
    const auto remove = [&](const QString &contactRef) -> QString {
        return u"DELETE" % ofEvent % u" AND ContactRef = " % contactRef;
    };
    const auto isThere = [=](const QString &contactRef) { return IsThere(courseRef, eventRef, contactRef); };
    const auto insert = [=](const QString &contactRef) { return Insert(courseRef, eventRef, contactRef); };
    return Reported("ADO_Course_Attended", false, [&] {
        const QSet<QString> stored =
            RemoveUnselected(u"SELECT ContactRef" % ofEvent, remove, selected, known, progress);
        return InsertSelected(attendanceStep, isThere, insert, stored, selected, progress);
    });
}
