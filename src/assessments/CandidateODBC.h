#pragma once

#include "database/values/Keys.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class ListModel;
class Progress;

/// Data functions of table `StudentExams`: one row for each candidate of an assessment on a course.

/// The "?" keys of the candidates of an assessment; nothing on an error.
std::optional<QStringList> ADO_Course_CandidateKeys(CourseRef courseRef, ExamRef examRef);
/// Makes the candidates of an assessment the people of a list ("?" keys). A new one starts with results of 0
/// and the assessment's format; who stays keeps his results. Of those who are not in the list only the
/// `known` ones go: the others were added elsewhere since. Reads `Exam`. An error or a cancel stops at that
/// person, with the earlier ones stored; false then.
bool ADO_Course_AddStudentsExam(CourseRef courseRef, ExamRef examRef, const ListModel &selected,
                                const QSet<QString> &known, Progress &progress);
