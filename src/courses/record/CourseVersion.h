#pragma once

#include "courses/record/CourseRecordODBC.h"
#include "database/statements/RecordMerge.h"
#include "database/values/Keys.h"

class ListModel;
class TreeModel;

/// Storing a course's own row, also where another workstation stored the same one since the screen was
/// filled.

/// What of a course's screen is stored with the row.
struct CourseLists {
    ListModel &characteristics;
    TreeModel &folders;
};

/// The version that a screen shows, or was filled from.
FieldValues Course_Values(const CourseRecord &course, const CourseLists &lists);
/// The version that is stored; empty where the course is gone, and on an error.
FieldValues Course_StoredValues(CourseRef courseRef);

/// The new CourseRef; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Add(const CourseRecord &course);
/// Writes the row with what another workstation changed since `base` was read; `course`, `lists` and `base`
/// are then what is stored, up to the lists, which are the caller's to write. The course's reference; 0 for a
/// duplicate, which the user is told, -1 on an error and where the user went back to the course.
int Course_Update(CourseRecord &course, const CourseLists &lists, FieldValues &base);
