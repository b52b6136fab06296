#include "enrolment/EnrolmentModule.h"

#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "enrolment/TransactionODBC.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

#include <algorithm>

namespace
{
template <typename Value>
Value Kept(const Value &shown, const Value &left, const Value &stored)
{
    return left == shown ? stored : left;
}

Money KeptTotal(Money shown, Money left, Money stored)
{
    return left == shown ? stored : left + std::max(Money(), stored - shown);
}

StudentRecord KeptRecord(const StudentRecord &shown, const StudentRecord &left, const StudentRecord &stored)
{
    StudentRecord kept = left;
    for (size_t kind = 0; kind < Fees::PaymentKinds; ++kind)
        kept.payments[kind] = KeptTotal(shown.payments[kind], left.payments[kind], stored.payments[kind]);
    kept.notes = Kept(shown.notes, left.notes, stored.notes);
    kept.basicFee = Kept(shown.basicFee, left.basicFee, stored.basicFee);
    kept.discount = Kept(shown.discount, left.discount, stored.discount);
    kept.concession = Kept(shown.concession, left.concession, stored.concession);
    kept.receipt = Kept(shown.receipt, left.receipt, stored.receipt);
    kept.taxName = Kept(shown.taxName, left.taxName, stored.taxName);
    kept.taxRate = Kept(shown.taxRate, left.taxRate, stored.taxRate);
    if (kept.basicFee != left.basicFee || kept.discount != left.discount)
        kept.netFee = Fees::NetFee(kept.basicFee, kept.discount);
    return kept;
}

/// Logs an act; one of nothing is not logged.
bool LogAct(CourseRef courseRef, ContactRef contactRef, const QString &receipt, const StudentPayment &payment)
{
    if (payment.act.Total() == Money())
        return true;
    const CreditCardRef creditCardRef(payment.logCard ? std::max(0, payment.logCard()) : 0);
    return ADO_Course_Log_Transaction(courseRef, contactRef, DateToInt(Clock::Today()), SqlSafeText(receipt),
                                      payment.act, creditCardRef);
}

bool UpdateStudent(CourseRef courseRef, ContactRef contactRef, StudentRecord student)
{
    student.notes = SqlSafeText(student.notes);
    student.concession = SqlSafeText(student.concession);
    student.receipt = SqlSafeText(student.receipt);
    student.taxName = SqlSafeText(student.taxName);
    return ADO_Course_UpdateStudent(courseRef, contactRef, student);
}

bool MayRemovePaid(const QStringList &paid)
{
    constexpr int mostTold = 10;
    QString text = paid.mid(0, mostTold).join(u'\n');
    if (paid.size() > mostTold)
        text += u"\nand " % QString::number(paid.size() - mostTold) % u" more.";
    return Dialogs::MsgBox(text % u"\nOkay to remove from the course? The payments stay in the log alone.",
                           QStringLiteral("Remove Students"), Dialogs::Buttons::YesNo,
                           Dialogs::Icon::Question, Dialogs::Answer::No) == Dialogs::Answer::Yes;
}

/// The payment without a word to the user; only inside a step.
PaymentResult Pay(CourseRef courseRef, ContactRef contactRef, const StudentPayment &payment)
{
    const std::optional<StudentRecord> stored = ReadStudent(courseRef, contactRef);
    if (!stored)
        return {PaymentOutcome::NotEnrolled, {}, {}};
    StudentRecord student = KeptRecord(payment.shown, payment.left, *stored);
    const Money sum = payment.act.Total();
    if (sum != Money() && student.TotalDue() < student.Paid() + sum)
        return {PaymentOutcome::Refused, *stored, student};
    student.payments = student.payments + payment.act;
    const bool isStored = LogAct(courseRef, contactRef, student.receipt, payment) &&
                          UpdateStudent(courseRef, contactRef, student);
    return {isStored ? PaymentOutcome::Stored : PaymentOutcome::Failed, *stored, student};
}
} // namespace

PaymentResult Course_Pay(CourseRef courseRef, ContactRef contactRef, const StudentPayment &payment)
{
    PaymentResult result = Reported("Course_Pay", PaymentResult(), [&] {
        return InOneStep(CourseStep(courseRef), [&] { return Pay(courseRef, contactRef, payment); });
    });
    const QString title = QStringLiteral("Warning");
    if (result.outcome == PaymentOutcome::Refused)
        Dialogs::MsgBox(QStringLiteral("Amount tendered exceeds the amount due\nNo Action Taken"), title);
    if (result.outcome == PaymentOutcome::NotEnrolled)
        Dialogs::MsgBox(QStringLiteral("Another user has removed this student from the course meanwhile.\n"
                                       "Nothing was stored."),
                        title);
    return result;
}

void Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                             Progress &progress)
{
    ADO_Course_ChangePercentage(SqlSafeText(concessionName), percentage, hardDiscount, progress);
}

bool Course_CheckLimit(int selected, int limit)
{
    if (limit <= 0 || selected <= limit)
        return true;
    Course_TellLimit(limit);
    return false;
}

void Course_TellLimit(int limit)
{
    Dialogs::MsgBox(u"This Course has a max limit of " % QString::number(limit) %
                        u" enrollments.\nPlease remove some and try again.",
                    QStringLiteral("Course Enrollment"), Dialogs::Buttons::Ok, Dialogs::Icon::Information);
}

QString Course_EnrolledText(CourseRef courseRef)
{
    const auto students = ADO_Course_PaidStudents(courseRef);
    if (!students || students->empty())
        return {};
    Money paid;
    for (const PaidStudent &student : *students)
        paid += student.paid;
    const QString people = students->size() == 1
                               ? QStringLiteral("1 person is enrolled")
                               : QString(QString::number(students->size()) % u" people are enrolled");
    return paid > Money() ? QString(people % u"; " % paid.Text() % u" has been paid.")
                          : QString(people % u'.');
}

QString Contact_EnrolledText(ContactRef contactRef)
{
    const int courses = ADO_Course_EnrolmentsOf(contactRef).value_or(0);
    if (courses == 0)
        return {};
    return u"Enrolled on " % QString::number(courses) % (courses == 1 ? u" course" : u" courses");
}

std::optional<KnownStudents> Course_AgreeToRemove(CourseRef courseRef, const QStringList &keys)
{
    if (keys.isEmpty())
        return KnownStudents();
    const auto students = ADO_Course_PaidStudents(courseRef);
    if (!students)
        return std::nullopt;
    KnownStudents leaving;
    QStringList paid;
    for (const PaidStudent &student : *students) {
        if (!keys.contains(student.key))
            continue;
        leaving.insert(student.key, student.paid);
        if (student.paid > Money())
            paid.append(student.name % u" has paid " % SystemValue(SystemRef::CurrencySymbol) %
                        student.paid.Text() % u'.');
    }
    return paid.isEmpty() || MayRemovePaid(paid) ? std::optional(leaving) : std::nullopt;
}

bool Course_RemoveStudents(CourseRef courseRef, const QStringList &keys)
{
    QStringList left = keys;
    while (!left.isEmpty()) {
        const std::optional<KnownStudents> agreed = Course_AgreeToRemove(courseRef, left);
        if (!agreed)
            return false;
        QStringList paidMeanwhile;
        for (const QString &key : left) {
            const EnrolmentChange change =
                ADO_Course_RemoveUnlessPaid(courseRef, ContactRef(KeyNumber(key)), agreed->value(key));
            if (change == EnrolmentChange::Failed)
                return false;
            if (change == EnrolmentChange::Paid)
                paidMeanwhile.append(key);
        }
        left = paidMeanwhile;
    }
    return true;
}
