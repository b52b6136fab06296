#include "assessments/Candidates.h"

#include "assessments/CandidateODBC.h"
#include "contacts/manager/PeopleRun.h"

#include <QWidget>

PeopleStore Candidates(CourseRef courseRef, ExamRef examRef)
{
    PeopleStore store;
    store.stored = [=] { return ADO_Course_CandidateKeys(courseRef, examRef); };
    store.take = [=](QWidget *picker, const ListModel &selected, const QSet<QString> &known) {
        return PeopleRun::Store(
            picker, picker->windowTitle(), QStringLiteral("candidates"), [&](Progress &progress) {
                return ADO_Course_AddStudentsExam(courseRef, examRef, selected, known, progress);
            });
    };
    return store;
}
