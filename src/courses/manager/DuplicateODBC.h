#pragma once

#include "database/values/Keys.h"

#include <QString>

/// Data functions that copy a course, each a part of it from the course `source` to the course `target`. All
/// but the first are false on an error.

/// What a duplicate takes over from its course, as bits of gDupCourseOpt.
enum DuplicateOption {
    DupeCharacteristics = 1,
    DupeEvents = 2,
    DupeStudents = 4,
    DupeStaff = 8,
    DupeFolders = 16,
    DupeFacilities = 32,
    DupeVenues = 64,
};

/// Adds a course with the row of `source` under another title, safe for SQL. The new CourseRef; 0 if a course
/// of that title exists, under whatever reference, -1 on an error and where the source is gone.
int ADO_Course_DupeCourse(CourseRef source, const QString &title);
/// Copies rows of `CourseChar`.
bool ADO_Course_DupeChar(CourseRef source, CourseRef target);
/// Copies the events without their descriptions, at the same hours, with their attendance, and with those of
/// their venues, staff and facilities that `options` has. The copy books them over the original on purpose.
bool ADO_Course_DupeEvents(CourseRef source, CourseRef target, int options);
/// Enrols the students of the source, who are charged as new ones.
bool ADO_Course_DupeStudentsEnrolled(CourseRef source, CourseRef target);
/// Copies rows of `CourseStaff`.
bool ADO_Course_DupeStaff(CourseRef source, CourseRef target);
/// Copies rows of `CoursesRelationships`.
bool ADO_Course_DupeHierarchy(CourseRef source, CourseRef target);
/// Copies rows of `CourseFacilities`.
bool ADO_Course_DupeFacilities(CourseRef source, CourseRef target);
/// Copies rows of `CourseVenues`.
bool ADO_Course_DupeVenues(CourseRef source, CourseRef target);
