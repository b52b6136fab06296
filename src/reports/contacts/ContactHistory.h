#pragma once

#include "enrolment/Money.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What a contact report reads for each person beside the person's own row; only inside Reported.
namespace ContactHistory
{
/// Reads `Contacts`: the statement of the report has no column of the notes.
QString Notes(int contactRef);
/// Names of the characteristics, in order of name. Reads `ContactConcession` and `Concessions`.
QStringList Characteristics(int contactRef);
/// Names of the groups, each once, in order of name. Reads `Groups` and `GroupNames`.
QStringList Groups(int contactRef);

/// What an enrolment cost and how it was paid, as rows of a label and a value.
struct MoneyRow {
    QString label;
    QString value;
};
struct Attended {
    QString course; ///< the title with the first and the last day behind it
    std::vector<MoneyRow> money;
    Money owing{}; ///< what is left of the fee
};
/// The courses of a person, with their money where it is asked for. Reads `StudentsEnrolled`, `Courses` and
/// `CourseEvents`.
std::vector<Attended> CoursesAttended(int contactRef, bool withMoney);

/// A course that a person taught or contributed to, with a day of it.
struct Staffed {
    QString role;
    QString course;
    int day = 0; ///< date-int
};
/// A row for each day of each course, in order of days. Reads `CourseStaff`, `Courses`, `CourseEvents`.
std::vector<Staffed> CoursesStaffed(int contactRef);
/// The same with the role, a row for each role on a course with its first day. Reads `RoleTypes` too.
std::vector<Staffed> RolesOnCourses(int contactRef);
} // namespace ContactHistory
