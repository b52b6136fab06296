#include "courses/record/AttendanceODBC.h"

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
} // namespace

std::optional<QStringList> ADO_Course_AttendedKeys(CourseRef courseRef, EventRef eventRef)
{
    return Reported("ADO_Course_AttendedKeys", std::optional<QStringList>(),
                    [&] { return StoredKeys(u"SELECT ContactRef" % OfEvent(courseRef, eventRef)); });
}

bool ADO_Course_Attended(CourseRef courseRef, EventRef eventRef, const ListModel &selected,
                         const QSet<QString> &known, Progress &progress)
{
    const QString course = SqlNumber(courseRef);
    const QString event = SqlNumber(eventRef);
    const QString ofEvent = OfEvent(courseRef, eventRef);
    const auto remove = [&](const QString &contactRef) -> QString {
        return u"DELETE" % ofEvent % u" AND ContactRef = " % contactRef;
    };
    const auto isThere = [&](const QString &contactRef) -> QString {
        return u"SELECT ContactRef FROM AttendanceRecord WHERE CourseRef = " % course %
               u" AND ContactRef = " % contactRef % u" AND EventNo = " % event;
    };
    const auto insert = [&](const QString &contactRef) -> QString {
        return u"INSERT INTO AttendanceRecord (CourseRef,ContactRef,EventNo) VALUES (" % course % u',' %
               contactRef % u',' % event % u')';
    };
    return Reported("ADO_Course_Attended", false, [&] {
        const QSet<QString> stored =
            RemoveUnselected(u"SELECT ContactRef" % ofEvent, remove, selected, known, progress);
        return InsertSelected(QStringLiteral("AttendanceRecord"), isThere, insert, stored, selected,
                              progress);
    });
}
