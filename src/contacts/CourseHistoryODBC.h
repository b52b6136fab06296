#pragma once

#include "enrolment/Fees.h"

#include <QString>

#include <vector>

/// One course that a person is enrolled on, with the row's own copy of fee, discount and tax.
struct CourseHistoryEntry {
    QString title;
    double basicFee = 0;
    double discount = 0; ///< percent of the fee
    QString concession;  ///< the characteristic that gave the discount; "" = none
    QString taxName;
    double taxRate = 0; ///< percent
    Fees::Payments paid;
};

/// Every enrolment of a person on a course that still exists; empty on an error. Reads `StudentsEnrolled`
/// and `Courses`.
std::vector<CourseHistoryEntry> ADO_Contact_CourseHistory(int contactRef);
