#include "enrolment/EnrolmentODBC.h"

#include "controls/ListModel.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"

#include <algorithm>

namespace
{
QString OfCourse(CourseRef courseRef)
{
    return u" WHERE CourseRef = " % SqlNumber(courseRef);
}

QString OfStudent(CourseRef courseRef, ContactRef contactRef)
{
    return OfCourse(courseRef) % u" AND ContactRef = " % SqlNumber(contactRef);
}

void RemoveStudent(CourseRef courseRef, ContactRef contactRef)
{
    Execute(u"DELETE FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
}

std::vector<Fees::Characteristic> CharacteristicsOf(ContactRef contactRef)
{
    std::vector<Fees::Characteristic> result;
    const Recordset rows = OpenRecordset(
        u"SELECT Concessions.* FROM Concessions INNER JOIN ContactConcession ON "
        u"Concessions.ConcessionRef = ContactConcession.ConcessionRef WHERE ContactConcession.ContactRef = " %
        SqlNumber(contactRef));
    for (const auto &row : rows)
        result.push_back({row.Text(u"Name"), row.Double(u"Percentage"), row.Double(u"HardDiscount")});
    return result;
}

bool IsFull(CourseRef courseRef, int limit)
{
    return limit > 0 && ReadKey(u"SELECT COUNT(*) AS Students FROM StudentsEnrolled" % OfCourse(courseRef),
                                u"Students") >= limit;
}

/// Only inside a step.
EnrolmentChange EnrollStudent(CourseRef courseRef, ContactRef contactRef, int limit)
{
    const QString taxName = SystemValue(SystemRef::TaxName);
    const double taxRate = CurrencyValue(u'0' % SystemValue(SystemRef::TaxRate));
    if (HasRow(u"SELECT ContactRef FROM StudentsEnrolled" % OfStudent(courseRef, contactRef)))
        return EnrolmentChange::Done;
    if (IsFull(courseRef, limit))
        return EnrolmentChange::Full;

    const Recordset course = OpenRecordset(u"SELECT * FROM Courses" % OfCourse(courseRef));
    const double fee = course.IsEmpty() ? 0 : TextValue(course.First().Text(u"Fee"));
    const Fees::DiscountChoice discount =
        fee > 0 ? Fees::ChooseDiscount(fee, CharacteristicsOf(contactRef)) : Fees::DiscountChoice();
    Execute(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,AmountPaid,ConcessionType,"
            u"ReceiptNo,Vouchers, TaxName, TaxRate) VALUES (" %
            SqlNumber(courseRef) % u',' % SqlNumber(contactRef) % u',' % SqlNumber(fee) % u',' %
            SqlNumber(discount.percent) % u",0,'" % DoubledApostrophes(discount.name) % u"','0',0,'" %
            DoubledApostrophes(taxName) % u"'," % SqlNumber(taxRate) % u')');
    return EnrolmentChange::Done;
}

/// The running totals, in the order of the kinds.
constexpr std::array<QStringView, Fees::PaymentKinds> paidColumns{u"AmountPaid", u"ChequePaid", u"CCardPaid",
                                                                  u"Vouchers",   u"Vouchers2",  u"Vouchers3",
                                                                  u"Vouchers4",  u"Vouchers5"};

/// What a row has been paid in all; nothing where one of the eight columns is NULL.
std::optional<double> PaidOf(const Recordset::Row &row)
{
    double sum = 0;
    for (const QStringView column : paidColumns) {
        if (row.IsNull(column))
            return std::nullopt;
        sum += row.Double(column);
    }
    return sum;
}

/// "Surname, Forename".
QString NameOf(const Recordset::Row &row)
{
    return row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename");
}

/// A number to two places, 0 for NULL and for one below zero, whose sign a leading zero hides.
double Number(const Recordset::Row &row, QStringView column)
{
    return Money::Of(std::max(0.0, row.Double(column))).Units();
}

/// Only inside a step.
EnrolmentChange RemoveUnlessPaid(CourseRef courseRef, ContactRef contactRef, Money known)
{
    const std::optional<StudentRecord> student = ReadStudent(courseRef, contactRef);
    if (student && student->Paid() > known)
        return EnrolmentChange::Paid;
    RemoveStudent(courseRef, contactRef);
    return EnrolmentChange::Done;
}

/// Ends all enrolments in one statement, if there is nobody but the known. True if it did.
bool RemoveAll(CourseRef courseRef, const KnownStudents &known)
{
    return InOneStep(CourseStep(courseRef), [&] {
        for (const auto &row : OpenRecordset(u"SELECT * FROM StudentsEnrolled" % OfCourse(courseRef))) {
            const auto student = known.find(u'?' % row.Text(u"ContactRef"));
            if (student == known.end() || EnrolmentOf(row).Paid() > *student)
                return false;
        }
        Execute(u"DELETE FROM StudentsEnrolled" % OfCourse(courseRef));
        return true;
    });
}

/// Ends the enrolments of those known who are not selected.
EnrolmentChange RemoveOthers(CourseRef courseRef, const ListModel &selected, const KnownStudents &known,
                             WriteGroup &group, Progress &progress)
{
    const Recordset enrolled =
        OpenRecordset(u"SELECT ContactRef FROM StudentsEnrolled" % OfCourse(courseRef));
    for (const auto &row : enrolled) {
        const QString key = u'?' % row.Text(u"ContactRef");
        const auto student = known.find(key);
        if (progress.IsCancelled() || student == known.end() || selected.Contains(key))
            continue;
        const EnrolmentChange change =
            ADO_Course_RemoveUnlessPaid(courseRef, ContactRef(KeyNumber(key)), *student);
        if (change != EnrolmentChange::Done)
            return change;
        EndRow(group);
        progress.SetValue(0); // they do not count as enrolled
    }
    return EnrolmentChange::Done;
}

bool WantsNewValue(int courses, const QString &title)
{
    return Dialogs::MsgBox(QString::number(courses) %
                               u" Course(s) have Students on this concession.\n"
                               u"Would you like to update them to the new conecession value?",
                           title, Dialogs::Buttons::YesNo, Dialogs::Icon::Question) == Dialogs::Answer::Yes;
}

QStringList TitlesOf(const Recordset &courses)
{
    QStringList titles;
    for (const auto &row : courses)
        titles += row.Text(u"Title");
    return titles;
}

/// Gives the students of one course the discount, and gives the percentage on as the amount raised it.
double ChangeCourse(CourseRef courseRef, const QString &concessionName, double percentage,
                    double hardDiscount, WriteGroup &group)
{
    const Recordset students =
        OpenRecordset(u"SELECT ContactRef,BasicFee FROM StudentsEnrolled WHERE ConcessionType = '" %
                      concessionName % u"' AND CourseRef = " % SqlNumber(courseRef));
    if (!students.IsEmpty())
        percentage = Fees::RaisedByAmount(percentage, students.First().Double(u"BasicFee"), hardDiscount);
    for (const auto &row : students) {
        InOneStep(CourseStep(courseRef), [&] {
            Execute(u"UPDATE StudentsEnrolled SET Discount = " % SqlNumber(percentage) %
                    OfStudent(courseRef, ContactRef(static_cast<int>(row.Long(u"ContactRef")))));
            return true;
        });
        EndRow(group);
    }
    return percentage;
}
} // namespace

QString CourseStep(CourseRef courseRef)
{
    return u"Course " % SqlNumber(courseRef);
}

StudentRecord EnrolmentOf(const Recordset::Row &row)
{
    StudentRecord record;
    record.notes = row.Text(u"Notes");
    record.receipt = row.Text(u"ReceiptNo");
    record.concession = row.Text(u"ConcessionType");
    record.taxName = row.Text(u"TaxName");
    record.basicFee = Money::Of(Number(row, u"BasicFee"));
    record.discount = Number(row, u"Discount");
    record.taxRate = Number(row, u"TaxRate");
    for (size_t kind = 0; kind < Fees::PaymentKinds; ++kind)
        record.payments[kind] = Money::Of(Number(row, paidColumns[kind]));
    record.netFee = Fees::NetFee(record.basicFee, record.discount);
    return record;
}

std::optional<StudentRecord> ReadStudent(CourseRef courseRef, ContactRef contactRef)
{
    const Recordset rows =
        OpenRecordset(u"SELECT * FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
    return rows.IsEmpty() ? std::nullopt : std::optional(EnrolmentOf(rows.First()));
}

EnrolmentChange ADO_Course_EnrollStudent(CourseRef courseRef, ContactRef contactRef, int limit)
{
    return Reported("ADO_Course_EnrollStudent", EnrolmentChange::Failed, [&] {
        return InOneStep(CourseStep(courseRef), [&] { return EnrollStudent(courseRef, contactRef, limit); });
    });
}

EnrolmentChange ADO_Course_EnrollStudents(CourseRef courseRef, int limit, const ListModel &selected,
                                          const KnownStudents &known, Progress &progress)
{
    return Reported("ADO_Course_EnrollStudents", EnrolmentChange::Failed, [&] {
        if (selected.IsEmpty() && RemoveAll(courseRef, known))
            return EnrolmentChange::Done;
        progress.Begin(selected.Count());
        WriteGroup group(gConnection);
        EnrolmentChange change = RemoveOthers(courseRef, selected, known, group, progress);
        int done = 0;
        while (change == EnrolmentChange::Done && done < selected.Count() && !progress.IsCancelled()) {
            change = ADO_Course_EnrollStudent(courseRef, ContactRef(KeyNumber(selected.At(done).key)), limit);
            if (change != EnrolmentChange::Done)
                break;
            EndRow(group);
            progress.SetValue(++done);
        }
        if (change == EnrolmentChange::Failed)
            return change;
        EndRows(group);
        return progress.IsCancelled() && done < selected.Count() ? EnrolmentChange::Failed : change;
    });
}

bool ADO_Course_RemoveStudent(CourseRef courseRef, ContactRef contactRef)
{
    return Reported("ADO_Course_RemoveStudent", false, [&] {
        RemoveStudent(courseRef, contactRef);
        return true;
    });
}

EnrolmentChange ADO_Course_RemoveUnlessPaid(CourseRef courseRef, ContactRef contactRef, Money known)
{
    return Reported("ADO_Course_RemoveStudent", EnrolmentChange::Failed, [&] {
        return InOneStep(CourseStep(courseRef),
                         [&] { return RemoveUnlessPaid(courseRef, contactRef, known); });
    });
}

bool ADO_Course_IsEnrolled(CourseRef courseRef, ContactRef contactRef)
{
    return Reported("ADO_Course_IsEnrolled", false, [&] {
        return HasRow(u"SELECT * FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
    });
}

int ADO_Course_PlacesLeft(CourseRef courseRef)
{
    return Reported("ADO_Course_PlacesLeft", 0, [&] {
        const Recordset course = OpenRecordset(u"SELECT Limit FROM Courses" % OfCourse(courseRef));
        const int limit = course.IsEmpty() ? 0 : static_cast<int>(TextValue(course.First().Text(u"Limit")));
        if (limit <= 0)
            return 0;
        const int enrolled =
            OpenRecordset(u"SELECT * FROM StudentsEnrolled" % OfCourse(courseRef)).RowCount();
        return enrolled == limit ? -limit : limit - enrolled;
    });
}

std::optional<QStringList> ADO_Course_StudentKeys(CourseRef courseRef)
{
    return Reported("ADO_Course_StudentKeys", std::optional<QStringList>(), [&] {
        QStringList keys;
        for (const auto &row :
             OpenRecordset(u"SELECT ContactRef FROM StudentsEnrolled" % OfCourse(courseRef)))
            keys.append(u'?' % row.Text(u"ContactRef"));
        return keys;
    });
}

std::optional<std::vector<PaidStudent>> ADO_Course_PaidStudents(CourseRef courseRef)
{
    using Students = std::vector<PaidStudent>;
    return Reported("ADO_Course_PaidStudents", std::optional<Students>(), [&] {
        Students students;
        for (const auto &row : OpenRecordset(
                 u"SELECT StudentsEnrolled.*, Contacts.Cust_Forename, Contacts.Cust_Surname FROM "
                 u"StudentsEnrolled LEFT JOIN Contacts ON StudentsEnrolled.ContactRef = Contacts.ContactRef "
                 u"WHERE StudentsEnrolled.CourseRef = " %
                 SqlNumber(courseRef)))
            students.push_back({u'?' % row.Text(u"ContactRef"), NameOf(row), EnrolmentOf(row).Paid()});
        return students;
    });
}

std::optional<int> ADO_Course_EnrolmentsOf(ContactRef contactRef)
{
    return Reported("ADO_Course_EnrolmentsOf", std::optional<int>(), [&] {
        return OpenRecordset(u"SELECT CourseRef FROM StudentsEnrolled WHERE ContactRef = " %
                             SqlNumber(contactRef))
            .RowCount();
    });
}

void ADO_Course_ShowEnrolledStudents(CourseRef courseRef, ListModel &students)
{
    Reported("ADO_Course_ShowEnrolledStudents", [&] {
        std::vector<ListItem> items;
        const Recordset rows =
            OpenRecordset(u"SELECT Contacts.Cust_Forename, Contacts.Cust_Surname, StudentsEnrolled.* FROM "
                          u"StudentsEnrolled INNER JOIN Contacts ON StudentsEnrolled.ContactRef = "
                          u"Contacts.ContactRef WHERE StudentsEnrolled.CourseRef = " %
                          SqlNumber(courseRef));
        for (const auto &row : rows) {
            const QString word =
                Fees::ListStatusWord(row.Double(u"BasicFee"), row.Double(u"Discount"),
                                     CurrencyValue(u'0' % row.Text(u"TaxRate")), PaidOf(row));
            items.push_back({u'?' % row.Text(u"ContactRef"), NameOf(row), {word}});
        }
        students.Fill(std::move(items));
        students.SelectFirst();
    });
}

ReadRow<StudentRecord> ADO_Course_StudentInfo(CourseRef courseRef, ContactRef contactRef)
{
    using Student = ReadRow<StudentRecord>;
    return Reported("ADO_Course_StudentInfo", Student::Failed(), [&] {
        const std::optional<StudentRecord> student = ReadStudent(courseRef, contactRef);
        return student ? Student(*student) : Student::Missing();
    });
}

bool ADO_Course_UpdateStudent(CourseRef courseRef, ContactRef contactRef, const StudentRecord &student)
{
    const auto paid = [&student](size_t kind) { return SqlNumber(student.payments[kind].Units()); };
    return Reported("ADO_Course_UpdateStudent", false, [&] {
        Execute(u"UPDATE StudentsEnrolled SET AmountPaid = " % paid(Fees::Cash) % u" ,BasicFee = " %
                SqlNumber(student.basicFee.Units()) % u" ,Discount = " % SqlNumber(student.discount) %
                u" ,Vouchers = " % paid(Fees::FirstVoucher) % u" ,Vouchers2 = " %
                paid(Fees::FirstVoucher + 1) % u" ,Vouchers3 = " % paid(Fees::FirstVoucher + 2) %
                u" ,Vouchers4 = " % paid(Fees::FirstVoucher + 3) % u" ,Vouchers5 = " %
                paid(Fees::FirstVoucher + 4) % u" ,ChequePaid = " % paid(Fees::Cheque) % u" ,CCardPaid = " %
                paid(Fees::CreditCard) % u" ,ConcessionType = '" % student.concession % u"' ,ReceiptNo = '" %
                student.receipt % u"' ,Notes = '" % student.notes % u"' ,TaxName = '" % student.taxName %
                u"' ,TaxRate = " % SqlNumber(student.taxRate) % OfStudent(courseRef, contactRef));
        return true;
    });
}

void ADO_Course_ChangePercentage(const QString &concessionName, double percentage, double hardDiscount,
                                 Progress &progress)
{
    const QString title = QStringLiteral("Concession Update");
    Reported("ADO_Course_ChangePercentage", [&] {
        const Recordset courses = OpenRecordset(
            u"SELECT Courses.CourseRef, Courses.Title FROM Courses INNER JOIN StudentsEnrolled ON "
            u"Courses.CourseRef = StudentsEnrolled.CourseRef WHERE StudentsEnrolled.ConcessionType = '" %
            concessionName % u"' ORDER BY Courses.Title ASC");
        if (courses.IsEmpty() || !WantsNewValue(courses.RowCount(), title))
            return;
        const QList<int> selected = Dialogs::Installed().selectCourses(TitlesOf(courses));
        if (selected.isEmpty())
            return;

        progress.Begin(static_cast<int>(selected.size()));
        WriteGroup group(gConnection);
        int done = 0;
        while (done < selected.size() && !progress.IsCancelled()) {
            const CourseRef courseRef =
                CourseRef(static_cast<int>(courses.At(selected.at(done)).Long(u"CourseRef")));
            percentage = ChangeCourse(courseRef, concessionName, percentage, hardDiscount, group);
            progress.SetValue(++done);
        }
        EndRows(group);
        Dialogs::MsgBox(QString::number(done) % u" Course(s) where updated.", title, Dialogs::Buttons::Ok,
                        Dialogs::Icon::Information);
    });
}
