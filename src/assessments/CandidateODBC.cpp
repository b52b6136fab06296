#include "assessments/CandidateODBC.h"

#include "courses/SelectionMatch.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"

bool ADO_Course_AddStudentsExam(int courseRef, int examRef, const ListModel &selected, Progress &progress)
{
    const QString course = SqlNumber(courseRef);
    const QString exam = SqlNumber(examRef);
    QString format;
    const auto remove = [&](const QString &contactRef) -> QString {
        return u"DELETE FROM StudentExams WHERE ExamRef = " % exam % u" AND CourseRef = " % course %
               u" AND ContactRef = " % contactRef;
    };
    const auto insert = [&](const QString &contactRef) -> QString {
        return u"INSERT INTO StudentExams "
               u"(CourseRef,ExamRef,ContactRef,ExamResult,EstimatedResult,ResultFormat,Notes) VALUES (" %
               course % u',' % exam % u',' % contactRef % u",0,0,'" % format % u"','')";
    };
    return Reported("ADO_Course_AddStudentsExam", false, [&] {
        const QSet<QString> stored = RemoveUnselected(
            u"SELECT ContactRef FROM StudentExams WHERE CourseRef = " % course % u" AND ExamRef = " % exam,
            remove, selected, progress);
        const Recordset definition = OpenRecordset(u"SELECT ResultFormat FROM Exam WHERE ExamRef = " % exam);
        if (!definition.IsEmpty())
            format = DoubledApostrophes(definition.First().Text(u"ResultFormat"));
        return InsertSelected(insert, stored, selected, progress);
    });
}
