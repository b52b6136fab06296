#include "enrolment/PaymentBoxes.h"

#include "database/statements/System.h"
#include "forms/frames/FormBuilder.h"

QString WithSymbol(const QString &caption)
{
    return caption % u' ' % SystemValue(SystemRef::CurrencySymbol);
}

Money AmountIn(const MoneyField *box)
{
    return Money::Of(box->Value());
}

void PaymentBoxes::Build(FormBuilder &form, const Names &names)
{
    const QString captions[] = {QStringLiteral("Cash"), QStringLiteral("Cheque"),
                                QStringLiteral("Credit Card")};
    for (size_t i = 0; i < Fees::FirstVoucher; ++i) {
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
        m_boxes[Fees::FirstVoucher + static_cast<size_t>(i)] = box;
    }
}

Fees::Payments PaymentBoxes::Values() const
{
    Fees::Payments payments;
    for (size_t kind = 0; kind < m_boxes.size(); ++kind)
        payments[kind] = AmountIn(m_boxes[kind]);
    return payments;
}

void PaymentBoxes::Show(const Fees::Payments &payments)
{
    for (size_t kind = 0; kind < m_boxes.size(); ++kind)
        m_boxes[kind]->SetValue(payments[kind].Units());
}
