#pragma once

#include "enrolment/Fees.h"
#include "platform/Recordset.h"

#include <QString>

class Progress;
class ListModel;

/// Data functions of table `StudentsEnrolled`: one row for each contact on a course, with its own copy of
/// the fee, the discount and the tax of the day it was made. Texts come already safe for SQL.

/// Enrols a contact on a course, with the largest discount that his characteristics give; who is enrolled
/// keeps his row as it is. Reads `Courses`, `Concessions`, `ContactConcession`. False on an error.
bool ADO_Course_EnrollStudent(int courseRef, int contactRef);
/// Makes the course's students those of the list (keys "?" and the contact's reference). An empty list
/// removes them all. An error or a cancel stops at that student, with the earlier ones enrolled; false then.
bool ADO_Course_EnrollStudents(int courseRef, const ListModel &selected, Progress &progress);
/// Removes the enrolment alone: payments, attendance and results of the student stay. False on an error.
bool ADO_Course_RemoveStudent(int courseRef, int contactRef);
bool ADO_Course_IsEnrolled(int courseRef, int contactRef);
/// 0 where the course has no limit, the number of places left, or a number below 0 where it is full.
int ADO_Course_PlacesLeft(int courseRef);

/// Fills the list with the course's students: key "?" and reference, the name, and the status word of
/// what is paid as the first sub-item. The first row is selected.
void ADO_Course_ShowEnrolledStudents(int courseRef, ListModel &students);

/// An enrolment as the payment screen shows it, every amount to two places.
struct StudentRecord {
    QString notes;
    QString receipt;
    QString concession; ///< the characteristic that gave the discount
    QString taxName;
    double basicFee = 0;
    double discount = 0; ///< percent of the basic fee
    double netFee = 0;
    double hardDiscount = 0; ///< the discount as an amount
    double taxRate = 0;      ///< percent
    double totalDue = 0;
    Fees::Payments payments; ///< running totals of what was paid
    double paid = 0;
    double owed = 0;
};

/// An enrolment from a row of `StudentsEnrolled`, with the amounts that follow from it.
StudentRecord EnrolmentOf(const Recordset::Row &row);

/// The payment screen, as far as the data layer knows it.
class StudentView
{
public:
    virtual ~StudentView() = default;
    virtual void ShowStudent(const StudentRecord &record) = 0;
    virtual void ShowNotEnrolled() = 0;
};

/// Shows one enrolment in the form. On an error the form is left as it is.
void ADO_Course_StudentInfo(StudentView &form, int courseRef, int contactRef);

struct StudentUpdate {
    Fees::Payments payments; ///< running totals
    QString notes;
    double basicFee = 0;
    double discount = 0; ///< percent
    QString concession;
    QString receipt;
    QString taxName;
    double taxRate = 0; ///< percent
};

/// Writes the enrolment back. False on an error.
bool ADO_Course_UpdateStudent(int courseRef, int contactRef, const StudentUpdate &student);

/// Offers to give the students on a changed characteristic its new discount, course by course: asks, lets
/// the user pick the courses, and writes `Discount`; tells how many courses that were. `percentage` is
/// percent of the basic fee, `hardDiscount` an amount in currency units. A course where the amount is worth
/// more than the percentage raises the percentage for the courses after it too. A cancelled `progress` stops
/// behind a course. Reads `Courses`, reads and writes `StudentsEnrolled`.
void ADO_Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                                 Progress &progress);
