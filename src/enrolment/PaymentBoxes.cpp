#include "enrolment/PaymentBoxes.h"

#include "database/System.h"
#include "forms/FormBuilder.h"

namespace
{
constexpr size_t firstVoucher = Fees::PaymentKinds - Fees::VoucherKinds;
}

QString WithSymbol(const QString &caption)
{
    return caption % u' ' % SystemValue(SystemRef::CurrencySymbol);
}

void PaymentBoxes::Build(FormBuilder &form, const Names &names)
{
    const QString captions[] = {QStringLiteral("Cash"), QStringLiteral("Cheque"),
                                QStringLiteral("Credit Card")};
    for (size_t i = 0; i < firstVoucher; ++i) {
        m_boxes[i] = form.Money(names.boxes[i], WithSymbol(captions[i]));
        form.Label(names.labels[i]);
    }
    for (int i = 0; i < Fees::VoucherKinds; ++i) {
        const QString voucher = SystemValue(SystemRef::VoucherName + i);
        const QString index = u'_' % QString::number(i);
        QString caption = WithSymbol(voucher);
        MoneyField *box = form.Money(names.voucher % index, caption.replace(u'&', QStringLiteral("&&")));
        box->setHidden(voucher.isEmpty());
        form.Label(names.voucherLabel % index)->setHidden(voucher.isEmpty());
        m_boxes[firstVoucher + static_cast<size_t>(i)] = box;
    }
}

Fees::Payments PaymentBoxes::Values() const
{
    Fees::Payments payments{m_boxes[0]->Value(), m_boxes[1]->Value(), m_boxes[2]->Value(), {}};
    for (size_t i = 0; i < payments.vouchers.size(); ++i)
        payments.vouchers[i] = m_boxes[firstVoucher + i]->Value();
    return payments;
}

void PaymentBoxes::Show(const Fees::Payments &payments)
{
    m_boxes[0]->SetValue(payments.cash);
    m_boxes[1]->SetValue(payments.cheque);
    m_boxes[2]->SetValue(payments.creditCard);
    for (size_t i = 0; i < payments.vouchers.size(); ++i)
        m_boxes[firstVoucher + i]->SetValue(payments.vouchers[i]);
}
