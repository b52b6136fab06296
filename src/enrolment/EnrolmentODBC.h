#pragma once

#include "database/statements/ReadRow.h"
#include "database/values/Keys.h"
#include "enrolment/Fees.h"
#include "platform/connection/Recordset.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class Progress;
class ListModel;

/// The key that a step about the students of one course, their limit and their payments is taken under.
QString CourseStep(CourseRef courseRef);

/// Data functions of table `StudentsEnrolled`: one row for each contact on a course, with its own copy of
/// the fee, the discount and the tax of the day it was made. Texts come already safe for SQL.

/// What became of a change to the students of a course.
enum class EnrolmentChange {
    Done,
    Full, ///< the course has as many as it takes
    Paid, ///< who was to go has paid more than the user knew, and stays
    Failed
};
/// Students by their keys ("?" and the reference), and what each had paid when the user looked.
using KnownStudents = QHash<QString, Money>;

/// Enrols a contact on a course, with the largest discount that his characteristics give; who is enrolled
/// keeps his row as it is. With a `limit` above 0 nobody is enrolled beyond it. Reads `Courses`,
/// `Concessions`, `ContactConcession`.
EnrolmentChange ADO_Course_EnrollStudent(CourseRef courseRef, ContactRef contactRef, int limit = 0);
/// Makes the course's students those of the list (keys "?" and the contact's reference). Of those who are not
/// in the list only the `known` ones go: the others were enrolled elsewhere since. A failure, a cancel or a
/// full course stops at that student, with the earlier ones enrolled; where somebody has paid meanwhile, it
/// ends before any are.
EnrolmentChange ADO_Course_EnrollStudents(CourseRef courseRef, int limit, const ListModel &selected,
                                          const KnownStudents &known, Progress &progress);
/// Removes the enrolment alone: payments, attendance and results of the student stay. False on an error.
bool ADO_Course_RemoveStudent(CourseRef courseRef, ContactRef contactRef);
/// The same, unless he has paid more than `known`.
EnrolmentChange ADO_Course_RemoveUnlessPaid(CourseRef courseRef, ContactRef contactRef, Money known);
bool ADO_Course_IsEnrolled(CourseRef courseRef, ContactRef contactRef);
/// 0 where the course has no limit, the number of places left, or a number below 0 where it is full.
int ADO_Course_PlacesLeft(CourseRef courseRef);

/// The "?" keys of the course's students; nothing on an error.
std::optional<QStringList> ADO_Course_StudentKeys(CourseRef courseRef);
/// A student with what he has paid.
struct PaidStudent {
    QString key;
    QString name;
    Money paid{};
};
/// Everybody who is enrolled on the course; nothing on an error.
std::optional<std::vector<PaidStudent>> ADO_Course_PaidStudents(CourseRef courseRef);

/// On how many courses the person is enrolled; nothing on an error. Reads `StudentsEnrolled`.
std::optional<int> ADO_Course_EnrolmentsOf(ContactRef contactRef);

/// Fills the list with the course's students: key "?" and reference, the name, and the status word of
/// what is paid as the first sub-item. The first row is selected.
void ADO_Course_ShowEnrolledStudents(CourseRef courseRef, ListModel &students);

/// An enrolment as its row holds it, every number to two places.
struct StudentRecord {
    Fees::Payments payments{}; ///< running totals of what was paid
    QString notes;
    Money basicFee{};
    double discount = 0; ///< percent of the basic fee
    QString concession;  ///< the characteristic that gave the discount
    QString receipt;
    QString taxName;
    double taxRate = 0; ///< percent
    /// The fee after the discount. It has no column: a discount typed as an amount gives it to the hundredth,
    /// where the stored percentage may give another one.
    Money netFee{};

    Money HardDiscount() const { return basicFee - netFee; } ///< the discount as an amount
    Money TotalDue() const { return Fees::TotalDue(netFee, taxRate); }
    Money Paid() const { return payments.Total(); }
    Money Owed() const { return TotalDue() - Paid(); }
};

/// An enrolment from a row of `StudentsEnrolled`.
StudentRecord EnrolmentOf(const Recordset::Row &row);
/// The enrolment of a person on a course; nothing where there is none. Only inside Reported.
std::optional<StudentRecord> ReadStudent(CourseRef courseRef, ContactRef contactRef);

/// Reads one enrolment for the payment screen; missing where the person is not enrolled on the course.
ReadRow<StudentRecord> ADO_Course_StudentInfo(CourseRef courseRef, ContactRef contactRef);

/// Writes the enrolment back. False on an error.
bool ADO_Course_UpdateStudent(CourseRef courseRef, ContactRef contactRef, const StudentRecord &student);

/// Offers to give the students on a changed characteristic its new discount, course by course: asks, lets
/// the user pick the courses, and writes `Discount`; tells how many courses that were. `percentage` is
/// percent of the basic fee, `hardDiscount` an amount in currency units. A course where the amount is worth
/// more than the percentage raises the percentage for the courses after it too. A cancelled `progress` stops
/// after a course. Reads `Courses`, reads and writes `StudentsEnrolled`.
void ADO_Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                                 Progress &progress);
