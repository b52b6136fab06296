#include "contacts/record/CourseHistoryText.h"

#include "contacts/record/CourseHistoryODBC.h"
#include "database/statements/System.h"

#include <QLocale>

namespace
{
constexpr int labelWidth = 42;
constexpr int amountWidth = 14;
constexpr int voucherNameLength = 20;
const QString indent = QStringLiteral("    ");

QString Line(const QString &label, Money amount)
{
    const bool isDebt = amount < Money();
    const QString money = (isDebt ? QStringLiteral("-") : QString()) %
                          SystemValue(SystemRef::CurrencySymbol) % (isDebt ? -amount : amount).Text();
    return indent % label.leftJustified(labelWidth) % money.rightJustified(amountWidth) % u'\n';
}

QString Rule()
{
    return indent % QString(labelWidth + amountWidth, u'-') % u'\n';
}

QString PaymentLine(const QString &label, Money amount)
{
    return amount > Money() ? Line(label, amount) : QString();
}

QString VoucherLabel(int voucher)
{
    const QString name = SystemValue(SystemRef::VoucherName + voucher);
    return u"Amount Paid by " %
           (name.isEmpty() ? QString(u"Voucher " % QString::number(voucher + 1))
                           : name.left(voucherNameLength)) %
           u':';
}

QString PaymentLines(const Fees::Payments &paid)
{
    QString text = PaymentLine(QStringLiteral("Amount Paid in Cash:"), paid[Fees::Cash]) %
                   PaymentLine(QStringLiteral("Amount Paid by Cheque:"), paid[Fees::Cheque]) %
                   PaymentLine(QStringLiteral("Amount Paid by Credit Card:"), paid[Fees::CreditCard]);
    for (int voucher = 0; voucher < Fees::VoucherKinds; ++voucher)
        text += PaymentLine(VoucherLabel(voucher), paid[Fees::FirstVoucher + static_cast<size_t>(voucher)]);
    return text;
}

/// Percent as short as it reads: "20" or "17.5".
QString Percent(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest) % u'%';
}

QString CourseBlock(const QString &title, const StudentRecord &course)
{
    QString text = title % u'\n' % Line(QStringLiteral("Course Fee:"), course.basicFee);
    if (course.discount > 0) {
        const QString by =
            course.concession.isEmpty() ? QString() : QString(u" (" % course.concession % u')');
        text += Line(u"Discount " % Percent(course.discount) % by % u':', -course.HardDiscount());
    }
    if (course.taxRate > 0) {
        const QString name = course.taxName.isEmpty() ? QStringLiteral("Tax") : course.taxName;
        text += Line(name % u' ' % Percent(course.taxRate) % u':', course.TotalDue() - course.netFee);
    }
    if (course.discount > 0 || course.taxRate > 0)
        text += Line(QStringLiteral("Amount Due:"), course.TotalDue());
    return text % PaymentLines(course.payments) % Rule() %
           Line(QStringLiteral("Amount Owing:"), course.Owed()) % u'\n';
}
} // namespace

QString Contact_CourseHistoryText(ContactRef contactRef)
{
    const std::vector<CourseHistoryEntry> courses = ADO_Contact_CourseHistory(contactRef);
    if (courses.empty())
        return QStringLiteral("Not enrolled on any course.");
    QString text;
    Money owing;
    for (const CourseHistoryEntry &course : courses) {
        text += CourseBlock(course.title, course.enrolment);
        owing += course.enrolment.Owed();
    }
    return text % Line(QStringLiteral("Total Amount Owing:"), owing);
}
