#include "courses/events/EventPeople.h"

#include "contacts/manager/PeopleRun.h"
#include "controls/ListModel.h"
#include "courses/events/AttendanceODBC.h"
#include "database/statements/DeletedMeanwhile.h"

#include <QWidget>

PeopleStore EventPeople::Attendees(CourseRef courseRef, EventRef eventRef)
{
    PeopleStore store;
    store.stored = [=] { return ADO_Course_AttendedKeys(courseRef, eventRef); };
    store.take = [=](QWidget *picker, const ListModel &selected, const QSet<QString> &known) {
        const int living = LivingKey(QStringLiteral("CourseEvents"), QStringLiteral("EventRef"),
                                     eventRef.number, QStringLiteral("event"), picker->windowTitle());
        if (living < 1)
            return living == 0;
        return PeopleRun::Store(
            picker, picker->windowTitle(), QStringLiteral("attendees"), [&](Progress &progress) {
                return ADO_Course_Attended(courseRef, eventRef, selected, known, progress);
            });
    };
    return store;
}
