#pragma once

#include "courses/lists/CourseFolderODBC.h"
#include "courses/record/CourseRecordODBC.h"
#include "courses/record/CourseVersion.h"
#include "database/statements/WholeSave.h"
#include "database/values/Keys.h"

/// Courses for the screens: texts as typed, made safe for SQL here, and the boxes about titles that are
/// taken.

/// Stores a course, added where its reference is 0, with the ticked folders, and one that is there already
/// with its characteristics, in one piece. The user is told of a duplicate. What another workstation changed
/// since `base` was read is joined as of Course_Update.
RecordSaved Course_Save(CourseRecord &course, const CourseLists &lists, FieldValues &base);
/// The same for the title alone.
int Course_Rename(const QString &title, CourseRef courseRef);
