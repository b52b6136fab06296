#pragma once

#include "courses/CourseFolderODBC.h"
#include "courses/CourseRecordODBC.h"
#include "database/WholeSave.h"

/// Courses for the screens: texts as typed, made safe for SQL here, and the boxes about titles that are
/// taken.

/// The new CourseRef; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Add(const CourseRecord &course);
/// The course's reference; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Update(const CourseRecord &course);
/// Stores a course, added where its reference is 0, with the ticked folders, and one that is there already
/// with its characteristics, in one piece. The user is told of a duplicate.
RecordSaved Course_Save(const CourseRecord &course, const ListModel &characteristics,
                        const TreeModel &folders);
int Course_Rename(const QString &title, int courseRef);
