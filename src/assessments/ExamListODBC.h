#pragma once

#include "database/values/Keys.h"

/// Data functions that delete from the vocabularies of assessments. Row 1 of the subjects and of the types is
/// the one that assessments fall back to, and is never deleted. Each is false on an error.

/// Assessments of that subject get none.
bool ADO_Course_DeleteExamName(int examNameRef);
/// Assessments of that type get none.
bool ADO_Course_DeleteExamType(int examTypeRef);
/// An assessment goes with its results and its places on courses.
bool ADO_Course_DeleteExam(ExamRef examRef);
/// An award goes with its grades.
bool ADO_Course_DeleteExamAward(int awardRef);
