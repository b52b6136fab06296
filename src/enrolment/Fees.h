#pragma once

#include "enrolment/Money.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

/// The arithmetic of fees and payments, without a database or a screen. Rates and discounts are in percent,
/// to two places as their boxes hold them. Every enrolment, screen and report that shows money works by it.
namespace Fees
{
/// The eight kinds of payment, always in this order: cash, cheque, credit card, voucher 1 to 5.
constexpr size_t PaymentKinds = 8;
constexpr int VoucherKinds = 5;
enum Kind : size_t { Cash, Cheque, CreditCard, FirstVoucher };

/// An amount of each kind.
struct Payments {
    std::array<Money, PaymentKinds> kinds{};

    Money &operator[](size_t kind) { return kinds[kind]; }
    Money operator[](size_t kind) const { return kinds[kind]; }
    Money Total() const;
    friend bool operator==(const Payments &, const Payments &) = default;
};
Payments operator+(Payments a, const Payments &b);

/// The fee after a discount in percent. A discount above 100 gives a negative fee.
Money NetFee(Money basicFee, double discount);
/// A discount in money as percent of the fee, to two places; 0 without a fee.
double DiscountOfAmount(Money basicFee, Money hardDiscount);
/// Net fee and tax; the tax applies to the rounded net fee.
Money TotalDue(Money netFee, double taxRate);

/// A characteristic of a contact, as far as it makes a discount.
struct Characteristic {
    QString name;
    double percentage = 0;
    double hardDiscount = 0; ///< an amount
};

struct DiscountChoice {
    double percent = 0;
    QString name; ///< the characteristic that gave it; "" = none
};

/// The larger of `percent` and the share that the amount `hardDiscount` is of the fee. A share that wins is
/// cut to 100, a given percentage is not. Without a fee or an amount `percent` stays.
double RaisedByAmount(double percent, double basicFee, double hardDiscount);
/// The discount of an enrolment: the largest that any characteristic gives. In each, the amount is tried
/// before the percentage; on a tie the earlier one stays. Without a fee there is none.
DiscountChoice ChooseDiscount(double basicFee, const std::vector<Characteristic> &characteristics);

/// "No", "Part", "Yes" or "In Credit" for a stored row, from what is due unrounded: where the screen rounds
/// 60.003 to 60.00, a payment of that reads "Part" here. `paid` is empty where a payment column was NULL. A
/// free course with nothing paid reads "Yes".
QString ListStatusWord(double basicFee, double discount, double taxRate, std::optional<double> paid);
/// The same word from the rounded boxes of the payment screen, where nothing paid reads "No" even for a
/// free course.
QString ScreenStatusWord(Money paid, Money totalDue);
} // namespace Fees
