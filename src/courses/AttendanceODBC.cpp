#include "courses/AttendanceODBC.h"

#include "courses/SelectionMatch.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

bool ADO_Course_Attended(int courseRef, int eventRef, const ListModel &selected, Progress &progress)
{
    const QString course = SqlNumber(courseRef);
    const QString event = SqlNumber(eventRef);
    const QString ofEvent =
        u" FROM AttendanceRecord WHERE CourseRef = " % course % u" AND EventNo = " % event;
    const auto remove = [&](const QString &contactRef) -> QString {
        return u"DELETE" % ofEvent % u" AND ContactRef = " % contactRef;
    };
    const auto insert = [&](const QString &contactRef) -> QString {
        return u"INSERT INTO AttendanceRecord (CourseRef,ContactRef,EventNo) VALUES (" % course % u',' %
               contactRef % u',' % event % u')';
    };
    return Reported("ADO_Course_Attended", false, [&] {
        const QSet<QString> stored =
            RemoveUnselected(u"SELECT ContactRef" % ofEvent, remove, selected, progress);
        return InsertSelected(insert, stored, selected, progress);
    });
}
