#pragma once

#include "database/values/Keys.h"

#include <QString>

/// Copies a course into the folder `target` with what `options` (DuplicateOption bits) has, in one
/// transaction. `name`, a title as stored, gives the `title` of the copy: "Copy of X", or "Copy of (2) X" and
/// so on where that is taken. Students are charged as new ones, and resources are booked over the original.
/// The new course, 0 where there is none.
CourseRef Course_Duplicate(CourseRef source, const QString &name, FolderRef target, int options,
                           QString &title);
