#pragma once

#include "controls/ListModel.h"
#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"

#include <QStringList>

#include <optional>
#include <vector>

/// Data functions of a course's own row, table `Courses`, and of its characteristics, table `CourseChar`.
/// Texts come already safe for SQL.

/// True while the course exists: another workstation may have deleted it.
bool ADO_Course_CheckCourse(CourseRef courseRef);
/// The new CourseRef; 0 if a course of that title and reference exists, -1 on an error. `fee` in currency
/// units; `limit` 0 = any number of students.
int ADO_Course_AddCourse(const QString &title, const QString &description, double fee, int limit,
                         const QString &referenceID);
/// `courseRef`; 0 if another course has that title and reference, -1 on an error.
int ADO_Course_UpdateCourse(const QString &title, const QString &description, double fee, int limit,
                            CourseRef courseRef, const QString &referenceID);
/// The same for the title alone, which no other course may have under any reference.
int ADO_Course_RenameCourse(const QString &title, CourseRef courseRef);
/// Deletes the course and what hangs on it in fourteen tables. Payments, card payments, waiting wishes and
/// issued awards outlive it. False if it stopped at an error, with the earlier tables cleared.
bool ADO_Course_DeleteCourse(CourseRef courseRef);
/// Replaces the course's characteristics by those of the list (keys "?" and `ConcessionRef`). False on an
/// error.
bool ADO_Course_UpdateConcessions(CourseRef courseRef, const ListModel &characteristics);

struct CourseRecord {
    CourseRef courseRef;
    QString title;
    QString referenceID;
    QString description;
    double fee = 0;
    int limit = 0;

    bool operator==(const CourseRecord &) const = default;
};

/// A course with what its screen shows beside its row.
struct CourseFile {
    CourseRecord course;
    QStringList characteristics; ///< their keys, "!" and reference
};

/// Reads a course. Reads `Courses` and `CourseChar`.
ReadRow<CourseFile> ADO_Course_ShowCourse(CourseRef courseRef);

/// The course's free text, nothing where the course is gone. On an error it is "": a failed read must not
/// pass for a deletion.
std::optional<QString> ADO_Course_Description(CourseRef courseRef);
