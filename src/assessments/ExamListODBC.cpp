#include "assessments/ExamListODBC.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/Sentinel.h"

bool ADO_Course_DeleteExamName(int examNameRef)
{
    return !IsSentinel(examNameRef) && RunWithKey("ADO_Course_DeleteExamName",
                                                  {u"UPDATE Exam SET ExamNameRef = 1 WHERE ExamNameRef = ",
                                                   u"DELETE FROM ExamName WHERE ExamNameRef = "},
                                                  examNameRef);
}

bool ADO_Course_DeleteExamType(int examTypeRef)
{
    return !IsSentinel(examTypeRef) && RunWithKey("ADO_Course_DeleteExamType",
                                                  {u"UPDATE Exam SET ExamTypeRef = 1 WHERE ExamTypeRef = ",
                                                   u"DELETE FROM ExamType WHERE ExamTypeRef = "},
                                                  examTypeRef);
}

bool ADO_Course_DeleteExam(ExamRef examRef)
{
    return RunWithKey("ADO_Course_DeleteExam",
                      {u"DELETE FROM StudentExams WHERE ExamRef = ",
                       u"DELETE FROM CourseExams WHERE ExamRef = ", u"DELETE FROM Exam WHERE ExamRef = "},
                      examRef.number);
}

bool ADO_Course_DeleteExamAward(int awardRef)
{
    return RunWithKey("ADO_Course_DeleteExamAward",
                      {u"DELETE FROM Awards WHERE AwardRef = ", u"DELETE FROM AwardNames WHERE AwardRef = "},
                      awardRef);
}
