#pragma once

#include "database/values/Keys.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class ListModel;
class Progress;

/// Data functions of table `AttendanceRecord`: one row for each person who was at an event; its column
/// `EventNo` holds the event's EventRef.

/// The step of a test for an attendee and the write that relies on it.
inline const QString attendanceStep = QStringLiteral("AttendanceRecord");

/// The "?" keys of those who attended an event; nothing on an error.
std::optional<QStringList> ADO_Course_AttendedKeys(CourseRef courseRef, EventRef eventRef);
/// Notes that a person attended an event, once. False on an error.
bool ADO_Course_StudentAttended(CourseRef courseRef, EventRef eventRef, ContactRef contactRef);
/// Ticks those who attended an event in a list of the course's students; whoever is not in it is added with
/// "Not Enrolled" as the first sub-item. Reads `Contacts` too. False on an error.
bool ADO_Course_ShowAttendedStudents(CourseRef courseRef, EventRef eventRef, ListModel &students);
/// Makes those who attended an event the people of a list ("?" keys), enrolled on the course or not. Of those
/// who are not in the list only the `known` ones go: the others were added elsewhere since. An error or a
/// cancel stops at that person, with the earlier ones stored; false then.
bool ADO_Course_Attended(CourseRef courseRef, EventRef eventRef, const ListModel &selected,
                         const QSet<QString> &known, Progress &progress);
