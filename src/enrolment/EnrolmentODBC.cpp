#include "enrolment/EnrolmentODBC.h"

#include "controls/ListModel.h"
#include "core/Progress.h"
#include "core/Session.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "database/System.h"
#include "platform/Connection.h"
#include "platform/Dialogs.h"

namespace
{
QString OfCourse(int courseRef)
{
    return u" WHERE CourseRef = " % SqlNumber(courseRef);
}

QString OfStudent(int courseRef, int contactRef)
{
    return OfCourse(courseRef) % u" AND ContactRef = " % SqlNumber(contactRef);
}

void RemoveStudent(int courseRef, int contactRef)
{
    Execute(u"DELETE FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
}

std::vector<Fees::Characteristic> CharacteristicsOf(int contactRef)
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

void EnrollStudent(int courseRef, int contactRef)
{
    const QString taxName = SystemValue(SystemRef::TaxName);
    const double taxRate = CurrencyValue(u'0' % SystemValue(SystemRef::TaxRate));
    if (HasRow(u"SELECT ContactRef FROM StudentsEnrolled" % OfStudent(courseRef, contactRef)))
        return;

    const Recordset course = OpenRecordset(u"SELECT * FROM Courses" % OfCourse(courseRef));
    const double fee = course.IsEmpty() ? 0 : TextValue(course.First().Text(u"Fee"));
    const Fees::DiscountChoice discount =
        fee > 0 ? Fees::ChooseDiscount(fee, CharacteristicsOf(contactRef)) : Fees::DiscountChoice();
    Execute(u"INSERT INTO StudentsEnrolled (CourseRef,ContactRef,BasicFee,Discount,AmountPaid,ConcessionType,"
            u"ReceiptNo,Vouchers, TaxName, TaxRate) VALUES (" %
            SqlNumber(courseRef) % u',' % SqlNumber(contactRef) % u',' % SqlNumber(fee) % u',' %
            SqlNumber(discount.percent) % u",0,'" % DoubledApostrophes(discount.name) % u"','0',0,'" %
            DoubledApostrophes(taxName) % u"'," % SqlNumber(taxRate) % u')');
}

/// What a row has been paid in all; nothing where one of the eight columns is NULL.
std::optional<double> PaidOf(const Recordset::Row &row)
{
    double sum = 0;
    for (const QStringView column : {u"AmountPaid", u"ChequePaid", u"CCardPaid", u"Vouchers", u"Vouchers2",
                                     u"Vouchers3", u"Vouchers4", u"Vouchers5"}) {
        if (row.IsNull(column))
            return std::nullopt;
        sum += row.Double(column);
    }
    return sum;
}

double Amount(const Recordset::Row &row, QStringView column)
{
    return CurrencyValue(u'0' % row.Text(column));
}

/// Ends the enrolments of those who are not selected.
void RemoveOthers(int courseRef, const ListModel &selected, WriteGroup &group, Progress &progress)
{
    const Recordset enrolled =
        OpenRecordset(u"SELECT ContactRef FROM StudentsEnrolled" % OfCourse(courseRef));
    for (const auto &row : enrolled) {
        const QString contactRef = row.Text(u"ContactRef");
        if (progress.IsCancelled() || selected.Contains(u'?' % contactRef))
            continue;
        RemoveStudent(courseRef, contactRef.toInt());
        EndRow(group);
        progress.SetValue(0); // they do not count as enrolled
    }
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
double ChangeCourse(int courseRef, const QString &concessionName, double percentage, double hardDiscount,
                    WriteGroup &group)
{
    const Recordset students =
        OpenRecordset(u"SELECT ContactRef,BasicFee FROM StudentsEnrolled WHERE ConcessionType = '" %
                      concessionName % u"' AND CourseRef = " % SqlNumber(courseRef));
    if (!students.IsEmpty())
        percentage = Fees::RaisedByAmount(percentage, students.First().Double(u"BasicFee"), hardDiscount);
    for (const auto &row : students) {
        Execute(u"UPDATE StudentsEnrolled SET Discount = " % SqlNumber(percentage) %
                OfStudent(courseRef, static_cast<int>(row.Long(u"ContactRef"))));
        EndRow(group);
    }
    return percentage;
}
} // namespace

StudentRecord EnrolmentOf(const Recordset::Row &row)
{
    StudentRecord record;
    record.notes = row.Text(u"Notes");
    record.receipt = row.Text(u"ReceiptNo");
    record.concession = row.Text(u"ConcessionType");
    record.taxName = row.Text(u"TaxName");
    record.basicFee = Amount(row, u"BasicFee");
    record.discount = Amount(row, u"Discount");
    record.taxRate = Amount(row, u"TaxRate");
    record.payments = {Amount(row, u"AmountPaid"),
                       Amount(row, u"ChequePaid"),
                       Amount(row, u"CCardPaid"),
                       {Amount(row, u"Vouchers"), Amount(row, u"Vouchers2"), Amount(row, u"Vouchers3"),
                        Amount(row, u"Vouchers4"), Amount(row, u"Vouchers5")}};
    record.netFee = Fees::NetFee(record.basicFee, record.discount);
    record.hardDiscount = Fees::HardDiscount(record.basicFee, record.netFee);
    record.totalDue = Fees::TotalDue(record.netFee, record.taxRate);
    record.paid = record.payments.Total();
    record.owed = Fees::Owed(record.totalDue, record.paid);
    return record;
}

bool ADO_Course_EnrollStudent(int courseRef, int contactRef)
{
    return Reported("ADO_Course_EnrollStudent", false, [&] {
        EnrollStudent(courseRef, contactRef);
        return true;
    });
}

bool ADO_Course_EnrollStudents(int courseRef, const ListModel &selected, Progress &progress)
{
    return Reported("ADO_Course_EnrollStudents", false, [&] {
        if (selected.IsEmpty()) {
            Execute(u"DELETE FROM StudentsEnrolled" % OfCourse(courseRef));
            return true;
        }
        progress.Begin(selected.Count());
        WriteGroup group(gConnection);
        RemoveOthers(courseRef, selected, group, progress);
        int done = 0;
        while (done < selected.Count() && !progress.IsCancelled()) {
            if (!ADO_Course_EnrollStudent(courseRef, KeyNumber(selected.At(done).key)))
                return false;
            EndRow(group);
            progress.SetValue(++done);
        }
        EndRows(group);
        return done == selected.Count();
    });
}

bool ADO_Course_RemoveStudent(int courseRef, int contactRef)
{
    return Reported("ADO_Course_RemoveStudent", false, [&] {
        RemoveStudent(courseRef, contactRef);
        return true;
    });
}

bool ADO_Course_IsEnrolled(int courseRef, int contactRef)
{
    return Reported("ADO_Course_IsEnrolled", false, [&] {
        return HasRow(u"SELECT * FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
    });
}

int ADO_Course_PlacesLeft(int courseRef)
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

void ADO_Course_ShowEnrolledStudents(int courseRef, ListModel &students)
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
            items.push_back({u'?' % row.Text(u"ContactRef"),
                             row.Text(u"Cust_Surname") % u", " % row.Text(u"Cust_Forename"),
                             {word}});
        }
        students.Fill(std::move(items));
        students.SelectFirst();
    });
}

void ADO_Course_StudentInfo(StudentView &form, int courseRef, int contactRef)
{
    Reported("ADO_Course_StudentInfo", [&] {
        const Recordset rows =
            OpenRecordset(u"SELECT * FROM StudentsEnrolled" % OfStudent(courseRef, contactRef));
        if (rows.IsEmpty())
            form.ShowNotEnrolled();
        else
            form.ShowStudent(EnrolmentOf(rows.First()));
    });
}

bool ADO_Course_UpdateStudent(int courseRef, int contactRef, const StudentUpdate &student)
{
    const Fees::Payments &paid = student.payments;
    return Reported("ADO_Course_UpdateStudent", false, [&] {
        Execute(u"UPDATE StudentsEnrolled SET AmountPaid = " % SqlNumber(paid.cash) % u" ,BasicFee = " %
                SqlNumber(student.basicFee) % u" ,Discount = " % SqlNumber(student.discount) %
                u" ,Vouchers = " % SqlNumber(paid.vouchers[0]) % u" ,Vouchers2 = " %
                SqlNumber(paid.vouchers[1]) % u" ,Vouchers3 = " % SqlNumber(paid.vouchers[2]) %
                u" ,Vouchers4 = " % SqlNumber(paid.vouchers[3]) % u" ,Vouchers5 = " %
                SqlNumber(paid.vouchers[4]) % u" ,ChequePaid = " % SqlNumber(paid.cheque) %
                u" ,CCardPaid = " % SqlNumber(paid.creditCard) % u" ,ConcessionType = '" %
                student.concession % u"' ,ReceiptNo = '" % student.receipt % u"' ,Notes = '" % student.notes %
                u"' ,TaxName = '" % student.taxName % u"' ,TaxRate = " % SqlNumber(student.taxRate) %
                OfStudent(courseRef, contactRef));
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
            const int courseRef = static_cast<int>(courses.At(selected.at(done)).Long(u"CourseRef"));
            percentage = ChangeCourse(courseRef, concessionName, percentage, hardDiscount, group);
            progress.SetValue(++done);
        }
        EndRows(group);
        Dialogs::MsgBox(QString::number(done) % u" Course(s) where updated.", title, Dialogs::Buttons::Ok,
                        Dialogs::Icon::Information);
    });
}
