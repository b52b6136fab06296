#pragma once

#include "database/values/Keys.h"
#include "enrolment/Money.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What a contact report reads for each person besides the person's own row; only inside Reported.
namespace ContactHistory
{
/// The person's notes. Reads `Contacts`, since the report's own statement has no column for the notes.
QString Notes(ContactRef contactRef);
/// Names of the characteristics, ordered by name. Reads `ContactConcession` and `Concessions`.
QStringList Characteristics(ContactRef contactRef);
/// Names of the groups, each once, ordered by name. Reads `Groups` and `GroupNames`.
QStringList Groups(ContactRef contactRef);

/// What an enrolment cost and how it was paid, as rows of a label and a value.
struct MoneyRow {
    QString label;
    QString value;
};
struct Attended {
    QString course; ///< the title followed by the first and the last day
    std::vector<MoneyRow> money;
    Money owing{}; ///< what is left of the fee
};
/// The courses of a person, with their money if that is asked for. Reads `StudentsEnrolled`, `Courses` and
/// `CourseEvents`.
std::vector<Attended> CoursesAttended(ContactRef contactRef, bool withMoney);

/// A course that a person taught or contributed to, with a day of it.
struct Staffed {
    QString role;
    QString course;
    int day = 0; ///< date-int
};
/// A row for each day of each course, ordered by day. Reads `CourseStaff`, `Courses`, `CourseEvents`.
std::vector<Staffed> CoursesStaffed(ContactRef contactRef);
/// The same with the role, a row for each role on a course with its first day. Reads `RoleTypes` too.
std::vector<Staffed> RolesOnCourses(ContactRef contactRef);
} // namespace ContactHistory
