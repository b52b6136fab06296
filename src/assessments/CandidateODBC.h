#pragma once

class ListModel;
class Progress;

/// Data functions of table `StudentExams`: one row for each candidate of an assessment on a course.

/// Makes the candidates of an assessment the people of a list ("?" keys). A new one starts with results of 0
/// and the assessment's format; who stays keeps his results. An empty list removes them all. Reads `Exam`. An
/// error or a cancel stops at that person, with the earlier ones stored; false then.
bool ADO_Course_AddStudentsExam(int courseRef, int examRef, const ListModel &selected, Progress &progress);
