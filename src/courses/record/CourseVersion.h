#pragma once

#include "courses/record/CourseRecordODBC.h"
#include "courses/record/ResourceTreeODBC.h"
#include "database/statements/RecordMerge.h"
#include "database/values/Keys.h"

#include <functional>

/// Storing a course's own row, also where another workstation stored the same one since the screen was
/// filled.

/// What of a course's screen is stored with the row.
struct CourseLists {
    ListModel &characteristics;
    TreeModel &folders;
    CourseResources &resources;
    ListModel *available = nullptr; ///< the characteristics that the course could have besides
};

/// Lists the characteristics that courses can have, keys "!" and reference: those with a key of `offered` in
/// `used`, the others in `available`. Reads CourseCharNames; false on an error.
bool Course_ShowCharacteristics(const QStringList &offered, ListModel &available, ListModel &used);
/// The version that a screen shows, or was filled from, without the tree of events: that has its own.
FieldValues Course_Values(const CourseRecord &course, const CourseLists &lists);
/// The new CourseRef; 0 for a duplicate, which the user is told, -1 on an error.
int Course_Add(const CourseRecord &course);
/// Writes the row and then, with `storeLists`, the lists, in one step: on a failure, and where `storeLists`
/// is false, nothing of it is stored. What another workstation changed since `base` was read is joined;
/// `course`, `lists` and `base` are then what is stored. The course's reference; 0 for a duplicate, and where
/// the course or some of its events were deleted, which the user is told; -1 on an error and where the user
/// went back to the course.
int Course_Update(CourseRecord &course, const CourseLists &lists, FieldValues &base,
                  const std::function<bool()> &storeLists);
