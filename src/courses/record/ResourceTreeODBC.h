#pragma once

#include "controls/ListModel.h"
#include "courses/booking/BookingClash.h"
#include "courses/booking/EventHours.h"
#include "courses/booking/ResourceTree.h"
#include "database/values/Keys.h"

#include <QHash>

#include <vector>

class Progress;

/// Data functions of the tree of a course's events with their attendance, facilities, staff and venues.

/// The tree as it is edited: nothing of it reaches the database before the course is saved.
struct CourseResources {
    TreeModel tree;
    ListModel enrolled; ///< the course's students, "?" keys
    QHash<EventRef, EventHours> hours;
    std::vector<ResourceTree::Node> read; ///< events and items that were read
    bool isWhole = true; ///< false after a failed read: saving would then delete what is missing
};

/// Reads the tree; people and things are listed by name. Reads `CourseEvents`, `RoleTypes`,
/// `StudentsEnrolled`, `Contacts`, `AttendanceRecord`, `Facilities`, `Venues` and their bookings. False on an
/// error.
bool ReadCourseResources(CourseRef courseRef, CourseResources &resources);
/// The same after numbering the events by date and time.
bool ADO_Course_ShowStaffEvents(CourseRef courseRef, CourseResources &resources);

/// Makes the stored events, bookings and attendance of a course those of the tree: wipes them and writes them
/// again in the order of the tree, as one step, so that on a failure everything stays as it was. A booking
/// that clashes is left out and added to `clashes`. An event that is not in the tree is deleted. False on an
/// error, and where `progress` was cancelled: the caller must then undo its own step.
bool SaveResourceTree(CourseRef courseRef, const TreeModel &tree, std::vector<BookingClash> &clashes,
                      Progress &progress);
