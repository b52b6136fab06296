#include "assessments/CandidateODBC.h"

#include "courses/lists/SelectionMatch.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

namespace
{
QString Candidates(CourseRef courseRef, ExamRef examRef)
{
    return u"SELECT ContactRef FROM StudentExams WHERE CourseRef = " % SqlNumber(courseRef) %
           u" AND ExamRef = " % SqlNumber(examRef);
}
} // namespace

std::optional<QStringList> ADO_Course_CandidateKeys(CourseRef courseRef, ExamRef examRef)
{
    return Reported("ADO_Course_CandidateKeys", std::optional<QStringList>(),
                    [&] { return StoredKeys(Candidates(courseRef, examRef)); });
}

bool ADO_Course_AddStudentsExam(CourseRef courseRef, ExamRef examRef, const ListModel &selected,
                                const QSet<QString> &known, Progress &progress)
{
    const QString course = SqlNumber(courseRef);
    const QString exam = SqlNumber(examRef);
    const QString candidates = Candidates(courseRef, examRef);
    QString format;
    const auto remove = [&](const QString &contactRef) -> QString {
        return u"DELETE FROM StudentExams WHERE ExamRef = " % exam % u" AND CourseRef = " % course %
               u" AND ContactRef = " % contactRef;
    };
    const auto isThere = [&](const QString &contactRef) -> QString {
        return candidates % u" AND ContactRef = " % contactRef;
    };
    const auto insert = [&](const QString &contactRef) -> QString {
        return u"INSERT INTO StudentExams "
               u"(CourseRef,ExamRef,ContactRef,ExamResult,EstimatedResult,ResultFormat,Notes) VALUES (" %
               course % u',' % exam % u',' % contactRef % u",0,0,'" % format % u"','')";
    };
    return Reported("ADO_Course_AddStudentsExam", false, [&] {
        const QSet<QString> stored = RemoveUnselected(candidates, remove, selected, known, progress);
        const Recordset definition = OpenRecordset(u"SELECT ResultFormat FROM Exam WHERE ExamRef = " % exam);
        if (!definition.IsEmpty())
            format = DoubledApostrophes(definition.First().Text(u"ResultFormat"));
        return InsertSelected(QStringLiteral("StudentExams"), isThere, insert, stored, selected, progress);
    });
}
