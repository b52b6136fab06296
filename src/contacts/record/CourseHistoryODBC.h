#pragma once

#include "database/values/Keys.h"
#include "enrolment/EnrolmentODBC.h"

/// One course that a person is enrolled on, with the row's own copy of fee, discount and tax.
struct CourseHistoryEntry {
    QString title;
    StudentRecord enrolment; ///< the amounts that the payment screen shows for it
};

/// Every enrolment of a person on a course that still exists; empty on an error. Reads `StudentsEnrolled`
/// and `Courses`.
std::vector<CourseHistoryEntry> ADO_Contact_CourseHistory(ContactRef contactRef);
