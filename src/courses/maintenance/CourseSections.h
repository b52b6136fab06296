#pragma once

#include "courses/maintenance/CourseItemODBC.h"
#include "database/statements/ReadRow.h"
#include "database/statements/Rights.h"
#include "database/values/GlobalCode.h"

#include <QStringList>

#include <span>

class ListModel;

/// The vocabularies of the course side; the numbers are those of the sections of course maintenance.
enum class CourseSection {
    Characteristics = 3,
    Venues = 4,
    Facilities = 5,
    AssessmentTypes = 7,
    AssessmentSubjects = 8,
    Awards = 9,
    Assessments = 10,
    ExcludeDates = 11,
};

struct CourseSectionInfo {
    CourseSection code;
    QString caption;
    CourseItemTable table;
    QString word; ///< for one of its rows, in the middle of a sentence
    Right right;  ///< the right that guards adding, changing and deleting its rows
};

/// In the order of the screen.
std::span<const CourseSectionInfo> CourseSections();
const CourseSectionInfo &CourseSectionOf(CourseSection code);

/// The titles of the columns of a section's list.
QStringList Course_Columns(CourseSection code);
/// Fills a list with the rows of a section, keys "!" and reference. False on an error.
bool Course_FillItems(CourseSection code, ListModel &list);
/// The name and reference of a row of a section other than the periods.
ReadRow<RefLabel> Course_ViewItem(CourseSection code, int key);
/// Adds a row of a simple vocabulary as typed. The new key; 0, after telling the user, where name and
/// reference exist; -1 on an error.
int Course_AddItem(CourseSection code, const RefLabel &item);
/// Renames a row as typed; results as of Course_AddItem, 0 as well where it was deleted.
int Course_UpdateItem(CourseSection code, int key, const RefLabel &item);
/// Deletes a row with what hangs on it. False on an error.
bool Course_DeleteItem(CourseSection code, int key);
