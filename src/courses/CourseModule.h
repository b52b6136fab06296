#pragma once

#include "courses/CourseFolderODBC.h"
#include "courses/CourseRecordODBC.h"

/// Courses for the screens: texts as typed, made safe for SQL here, and the boxes about titles that are
/// taken.

/// The new CourseRef; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Add(const CourseRecord &course);
/// The course's reference; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Update(const CourseRecord &course);
int Course_Rename(const QString &title, int courseRef);
