#include "courses/record/CoursePeople.h"

#include "contacts/manager/ContactSelection.h"
#include "contacts/manager/PeopleRun.h"
#include "controls/ListModel.h"
#include "enrolment/EnrolmentModule.h"

#include <QWidget>

namespace
{
bool Enrol(QWidget *picker, CourseRef courseRef, int limit, const ListModel &selected,
           const QSet<QString> &known)
{
    QStringList leaving;
    for (const QString &key : known) {
        if (!selected.Contains(key))
            leaving.append(key);
    }
    if (!Course_CheckLimit(selected.Count(), limit))
        return false;
    const std::optional<KnownStudents> agreed = Course_AgreeToRemove(courseRef, leaving);
    if (!agreed)
        return false;
    EnrolmentChange change = EnrolmentChange::Failed;
    PeopleRun::Store(picker, QStringLiteral("Course Enrollment"), QStringLiteral("enrolled"),
                     [&](Progress &progress) {
                         change = ADO_Course_EnrollStudents(courseRef, limit, selected, *agreed, progress);
                         return change == EnrolmentChange::Done;
                     });
    if (change == EnrolmentChange::Full)
        Course_TellLimit(limit);
    // Somebody paid while the question was open: it comes again, with the new sum.
    return change == EnrolmentChange::Paid ? Enrol(picker, courseRef, limit, selected, known)
                                           : change == EnrolmentChange::Done;
}
} // namespace

PeopleStore CoursePeople::Students(CourseRef courseRef, int limit)
{
    PeopleStore store;
    store.stored = [=] { return ADO_Course_StudentKeys(courseRef); };
    store.start = [=](const ListModel &shown, ListModel &selected, Progress &progress) {
        Contact_SelectStudents(courseRef, shown, selected, progress);
    };
    store.take = [=](QWidget *picker, const ListModel &selected, const QSet<QString> &known) {
        return Enrol(picker, courseRef, limit, selected, known);
    };
    return store;
}
