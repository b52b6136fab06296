#pragma once

#include "database/values/Keys.h"
#include "enrolment/EnrolmentODBC.h"

#include <functional>

/// Enrolment for the screens: texts as typed, made safe for SQL here.

/// One act at the payment desk.
struct StudentPayment {
    StudentRecord shown; ///< the enrolment as the clerk was shown it
    StudentRecord left;  ///< as he leaves it, without the amounts of this act
    Fees::Payments act;  ///< what is paid now; nothing of it = only the rest is saved
    /// Writes the row of a card payment and gives its reference, below 1 where there is none. It is a part of
    /// the payment's one step.
    std::function<int()> logCard{};
};

enum class PaymentOutcome {
    Stored,
    Refused,     ///< more was tendered than is owed, which the user was told
    NotEnrolled, ///< another workstation removed the student, which the user was told
    Failed
};

struct PaymentResult {
    PaymentOutcome outcome = PaymentOutcome::Failed;
    StudentRecord stored{};  ///< as the database held it when the payment came to it
    StudentRecord student{}; ///< what is stored now; refused, what it would be without the act
};

/// Takes a payment, dated today, and saves the enrolment: the card's row, then the row of `Transactions`,
/// then the running totals of `StudentsEnrolled`. All of it or nothing is stored. Texts as typed.
///
/// What another workstation stored since the enrolment was shown is kept, field by field, where this clerk
/// left a field as he was shown it; where he changed it, his holds. Payments only add: a running total that
/// rose meanwhile was paid into, and keeps what was added on top of his correction.
PaymentResult Course_Pay(CourseRef courseRef, ContactRef contactRef, const StudentPayment &payment);
/// Called when a characteristic's percentage or amount was changed.
void Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                             Progress &progress);
/// True if `selected` contacts fit on the course; otherwise the user is told its limit.
bool Course_CheckLimit(int selected, int limit);
void Course_TellLimit(int limit);

/// What a question before deleting the course says of its students, and of what they paid in currency units:
/// "3 people are enrolled; 65.50 has been paid."; "" if there are none, and on an error.
QString Course_EnrolledText(CourseRef courseRef);
/// The same of a person: "Enrolled on 2 courses".
QString Contact_EnrolledText(ContactRef contactRef);

/// Asks whether those of the students of `keys` who have paid may be removed, with name and sum. The
/// students with what they have paid; nothing where the user says no, and on an error.
std::optional<KnownStudents> Course_AgreeToRemove(CourseRef courseRef, const QStringList &keys);
/// Removes students, after that question. False where it was not all done.
bool Course_RemoveStudents(CourseRef courseRef, const QStringList &keys);
