#pragma once

#include "enrolment/Fees.h"

class FormBuilder;
class MoneyField;

/// A caption with the currency symbol after it.
QString WithSymbol(const QString &caption);

/// What a money box holds.
Money AmountIn(const MoneyField *box);

/// The boxes of the eight payment kinds on a screen.
class PaymentBoxes final
{
public:
    /// The names of the boxes and of their captions; those of the vouchers end in their index.
    struct Names {
        std::array<QString, 3> boxes;  ///< cash, cheque, credit card
        std::array<QString, 3> labels; ///< likewise
        QString voucher;
        QString voucherLabel;
    };

    /// Builds all eight; a voucher kind without a name is hidden.
    void Build(FormBuilder &form, const Names &names);

    const std::array<MoneyField *, Fees::PaymentKinds> &All() const { return m_boxes; }
    MoneyField *CreditCard() const { return m_boxes[Fees::CreditCard]; }
    Fees::Payments Values() const;
    void Show(const Fees::Payments &payments);

private:
    std::array<MoneyField *, Fees::PaymentKinds> m_boxes{}; ///< in the order of the kinds
};
