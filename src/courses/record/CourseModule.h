#pragma once

#include "courses/lists/CourseFolderODBC.h"
#include "courses/record/CourseRecordODBC.h"
#include "courses/record/CourseVersion.h"
#include "database/statements/WholeSave.h"
#include "database/values/Keys.h"

/// Courses for the screens: texts as typed, made safe for SQL here, and the boxes about titles that are
/// taken.

/// Stores a course, added where its reference is 0, with the ticked folders, and one that is there already
/// with its characteristics and its tree of events, in one piece. The user is told of a duplicate, of every
/// booking that was not made, and of what was deleted meanwhile. What another workstation changed since
/// `base` was read is joined as of Course_Update. A cancelled `progress` undoes everything.
RecordSaved Course_Save(CourseRecord &course, const CourseLists &lists, FieldValues &base,
                        Progress &progress);
/// Stores the title alone. The course's reference; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Rename(const QString &title, CourseRef courseRef);
