#include "reports/contacts/ContactHistory.h"

#include "database/statements/MiscODBC.h"
#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "enrolment/EnrolmentODBC.h"
#include "reports/contacts/ReportFields.h"

#include <algorithm>
#include <array>

namespace
{
constexpr int longestTaxName = 15;
constexpr int longestVoucherName = 20;

QStringList Texts(const QString &sql, QStringView column)
{
    QStringList texts;
    for (const auto &row : OpenRecordset(sql))
        texts.append(row.Text(column));
    return texts;
}

QString Shortened(const QString &text, int longest)
{
    return text.size() > longest ? QString(text.left(longest) % u"...") : text;
}

/// " (01/02/2026 - 28/02/2026)"; "" for a course without events.
QString FirstAndLastDay(qint64 courseRef)
{
    int first = 99999999;
    int last = 0;
    for (const auto &row :
         OpenRecordset(u"SELECT EDate from CourseEvents WHERE CourseRef = " % SqlNumber(courseRef))) {
        const auto day = static_cast<int>(row.Long(u"EDate"));
        if (day == 0)
            continue;
        first = std::min(first, day);
        last = std::max(last, day);
    }
    return last == 0 ? QString()
                     : QString(u" (" % IntToDateText(int(first)) % u" - " % IntToDateText(int(last)) % u')');
}

QString PaymentLabel(size_t kind)
{
    constexpr std::array<QStringView, Fees::FirstVoucher> labels{u"in Cash", u"by Cheque", u"by Credit Card"};
    if (kind < labels.size())
        return u"Amount Paid " % labels[kind] % u':';
    const int voucher = static_cast<int>(kind - Fees::FirstVoucher);
    return u"Amount Paid by " % SystemValue(SystemRef::VoucherName + voucher).left(longestVoucherName) % u':';
}

/// Works from the fee down to what is owed, with a row for each step, using the amounts of the payment
/// screen.
void AddMoney(const StudentRecord &student, ContactHistory::Attended &course)
{
    const auto add = [&course](const QString &label, const QString &value) {
        course.money.push_back({label, value});
    };
    add(QStringLiteral("Course Fee:"), MoneyText(student.basicFee));
    if (student.discount > 0)
        add(QStringLiteral("Discount %:"), SqlNumber(student.discount) % u"% (" % student.concession % u')');
    if (student.taxRate > 0)
        add(Shortened(student.taxName, longestTaxName),
            MoneyText(student.TotalDue() - student.netFee) % u" (" % SqlNumber(student.taxRate) % u"%)");
    if (student.discount > 0 || student.taxRate > 0)
        add(QStringLiteral("Amount Due:"), MoneyText(student.TotalDue()));
    for (size_t kind = 0; kind < Fees::PaymentKinds; ++kind) {
        if (const Money paid = student.payments[kind]; paid > Money())
            add(PaymentLabel(kind), MoneyText(paid));
    }
    course.owing = student.Owed();
    add(QStringLiteral("Amount Owing:"), MoneyText(course.owing));
}

QString StaffedSql(QStringView columns, ContactRef contactRef)
{
    return u"SELECT DISTINCT " % columns %
           u" FROM RoleTypes, ((Contacts INNER JOIN CourseStaff ON Contacts.ContactRef = "
           u"CourseStaff.ContactRef) INNER JOIN Courses ON CourseStaff.CourseRef = Courses.CourseRef) INNER "
           u"JOIN CourseEvents ON Courses.CourseRef = CourseEvents.CourseRef WHERE Contacts.ContactRef = " %
           SqlNumber(contactRef) %
           u" AND CourseStaff.RoleTypeRef = RoleTypes.RoleTypeRef ORDER BY CourseEvents.EDate";
}
} // namespace

QString ContactHistory::Notes(ContactRef contactRef)
{
    const Recordset person =
        OpenRecordset(u"SELECT * FROM Contacts WHERE ContactRef = " % SqlNumber(contactRef));
    return person.IsEmpty() ? QString() : person.First().Text(u"Cust_Notes");
}

QStringList ContactHistory::Characteristics(ContactRef contactRef)
{
    QString terms;
    for (const auto &row : OpenRecordset(u"SELECT ConcessionRef FROM ContactConcession WHERE ContactRef = " %
                                         SqlNumber(contactRef)))
        terms += u" OR ConcessionRef = " % SqlNumber(row.Long(u"ConcessionRef"));
    if (terms.isEmpty())
        return {};
    return Texts(u"SELECT Name FROM Concessions WHERE " % QStringView(terms).mid(4) % u" ORDER BY Name",
                 u"Name");
}

QStringList ContactHistory::Groups(ContactRef contactRef)
{
    return Texts(u"SELECT DISTINCT GroupNames.Name FROM Groups INNER JOIN GroupNames ON Groups.GroupRef = "
                 u"GroupNames.GroupRef WHERE Groups.ContactRef = " %
                     SqlNumber(contactRef) % u" ORDER BY GroupNames.Name",
                 u"Name");
}

std::vector<ContactHistory::Attended> ContactHistory::CoursesAttended(ContactRef contactRef, bool withMoney)
{
    std::vector<Attended> courses;
    for (const auto &row : OpenRecordset(
             u"SELECT StudentsEnrolled.*,Courses.Title FROM StudentsEnrolled INNER JOIN Courses ON "
             u"StudentsEnrolled.CourseRef = Courses.CourseRef WHERE StudentsEnrolled.ContactRef = " %
             SqlNumber(contactRef))) {
        Attended course{row.Text(u"Title") % FirstAndLastDay(row.Long(u"CourseRef")), {}};
        if (withMoney)
            AddMoney(EnrolmentOf(row), course);
        courses.push_back(std::move(course));
    }
    return courses;
}

std::vector<ContactHistory::Staffed> ContactHistory::CoursesStaffed(ContactRef contactRef)
{
    std::vector<Staffed> courses;
    for (const auto &row : OpenRecordset(StaffedSql(u"Courses.Title, CourseEvents.EDate", contactRef)))
        courses.push_back({{}, row.Text(u"Title"), static_cast<int>(row.Long(u"EDate"))});
    return courses;
}

std::vector<ContactHistory::Staffed> ContactHistory::RolesOnCourses(ContactRef contactRef)
{
    std::vector<Staffed> roles;
    for (const auto &row :
         OpenRecordset(StaffedSql(u"RoleTypes.Name, Courses.Title, CourseEvents.EDate", contactRef))) {
        const Staffed staffed{row.Text(u"Name"), row.Text(u"Title"), static_cast<int>(row.Long(u"EDate"))};
        const bool isThere = std::any_of(roles.begin(), roles.end(), [&staffed](const Staffed &role) {
            return role.role == staffed.role && role.course == staffed.course;
        });
        if (!isThere)
            roles.push_back(staffed);
    }
    return roles;
}
