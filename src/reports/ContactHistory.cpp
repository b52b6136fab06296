#include "reports/ContactHistory.h"

#include "database/DecodeDateFunc.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
#include "database/System.h"
#include "enrolment/Fees.h"
#include "reports/ReportFields.h"

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

/// The kinds of payment with their columns and names, in the order of all screens.
struct PaymentKind {
    const char16_t *column;
    const char16_t *label; ///< null = the voucher's name
};
constexpr std::array<PaymentKind, Fees::PaymentKinds> paymentKinds{{{u"AmountPaid", u"in Cash"},
                                                                    {u"ChequePaid", u"by Cheque"},
                                                                    {u"CCardPaid", u"by Credit Card"},
                                                                    {u"Vouchers", nullptr},
                                                                    {u"Vouchers2", nullptr},
                                                                    {u"Vouchers3", nullptr},
                                                                    {u"Vouchers4", nullptr},
                                                                    {u"Vouchers5", nullptr}}};

QString PaymentLabel(size_t kind)
{
    const PaymentKind &payment = paymentKinds[kind];
    if (payment.label)
        return u"Amount Paid " % QStringView(payment.label) % u':';
    const int voucher = static_cast<int>(kind) - (Fees::PaymentKinds - Fees::VoucherKinds);
    return u"Amount Paid by " % SystemValue(SystemRef::VoucherName + voucher).left(longestVoucherName) % u':';
}

/// Works down from the fee to what is owed, a row for each step. It is the running sum that counts here, not
/// what another screen has stored.
void AddMoney(const Recordset::Row &row, ContactHistory::Attended &course)
{
    const double fee = row.Double(u"BasicFee");
    const double discount = row.Double(u"Discount");
    const double taxRate = row.Double(u"TaxRate");
    double amount = fee;
    course.money.push_back({QStringLiteral("Course Fee:"), MoneyText(fee)});
    if (discount > 0) {
        amount = TextValue(FormatNumber(fee - fee / 100 * discount, 2));
        course.money.push_back({QStringLiteral("Discount %:"),
                                SqlNumber(discount) % u"% (" % row.Text(u"ConcessionType") % u')'});
    }
    if (taxRate > 0) {
        const double tax = amount * taxRate / 100;
        amount += tax;
        course.money.push_back({Shortened(row.Text(u"TaxName"), longestTaxName),
                                MoneyText(tax) % u" (" % SqlNumber(taxRate) % u"%)"});
    }
    if (discount > 0 || taxRate > 0)
        course.money.push_back({QStringLiteral("Amount Due:"), MoneyText(amount)});
    for (size_t kind = 0; kind < paymentKinds.size(); ++kind) {
        const double paid = row.Double(paymentKinds[kind].column);
        if (paid <= 0)
            continue;
        course.money.push_back({PaymentLabel(kind), MoneyText(paid)});
        amount -= paid;
    }
    course.money.push_back({QStringLiteral("Amount Owing:"), MoneyText(amount)});
    course.owing = amount;
}

QString StaffedSql(QStringView columns, int contactRef)
{
    return u"SELECT DISTINCT " % columns %
           u" FROM RoleTypes, ((Contacts INNER JOIN CourseStaff ON Contacts.ContactRef = "
           u"CourseStaff.ContactRef) INNER JOIN Courses ON CourseStaff.CourseRef = Courses.CourseRef) INNER "
           u"JOIN CourseEvents ON Courses.CourseRef = CourseEvents.CourseRef WHERE Contacts.ContactRef = " %
           SqlNumber(contactRef) %
           u" AND CourseStaff.RoleTypeRef = RoleTypes.RoleTypeRef ORDER BY CourseEvents.EDate";
}
} // namespace

QString ContactHistory::Notes(int contactRef)
{
    const Recordset person =
        OpenRecordset(u"SELECT * FROM Contacts WHERE ContactRef = " % SqlNumber(contactRef));
    return person.IsEmpty() ? QString() : person.First().Text(u"Cust_Notes");
}

QStringList ContactHistory::Characteristics(int contactRef)
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

QStringList ContactHistory::Groups(int contactRef)
{
    return Texts(u"SELECT DISTINCT GroupNames.Name FROM Groups INNER JOIN GroupNames ON Groups.GroupRef = "
                 u"GroupNames.GroupRef WHERE Groups.ContactRef = " %
                     SqlNumber(contactRef) % u" ORDER BY GroupNames.Name",
                 u"Name");
}

std::vector<ContactHistory::Attended> ContactHistory::CoursesAttended(int contactRef, bool withMoney)
{
    std::vector<Attended> courses;
    for (const auto &row : OpenRecordset(
             u"SELECT StudentsEnrolled.*,Courses.Title FROM StudentsEnrolled INNER JOIN Courses ON "
             u"StudentsEnrolled.CourseRef = Courses.CourseRef WHERE StudentsEnrolled.ContactRef = " %
             SqlNumber(contactRef))) {
        Attended course{row.Text(u"Title") % FirstAndLastDay(row.Long(u"CourseRef")), {}};
        if (withMoney)
            AddMoney(row, course);
        courses.push_back(std::move(course));
    }
    return courses;
}

std::vector<ContactHistory::Staffed> ContactHistory::CoursesStaffed(int contactRef)
{
    std::vector<Staffed> courses;
    for (const auto &row : OpenRecordset(StaffedSql(u"Courses.Title, CourseEvents.EDate", contactRef)))
        courses.push_back({{}, row.Text(u"Title"), static_cast<int>(row.Long(u"EDate"))});
    return courses;
}

std::vector<ContactHistory::Staffed> ContactHistory::RolesOnCourses(int contactRef)
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
