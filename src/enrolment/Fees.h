#pragma once

#include <QString>

#include <array>
#include <optional>
#include <vector>

/// The arithmetic of fees and payments, without a database or a screen. Money is in currency units, rates
/// and discounts in percent. Every enrolment, screen and report that shows money works by it.
namespace Fees
{
/// The eight kinds of payment, always in this order: cash, cheque, credit card, voucher 1 to 5.
constexpr int PaymentKinds = 8;
constexpr int VoucherKinds = 5;

struct Payments {
    double cash = 0;
    double cheque = 0;
    double creditCard = 0;
    std::array<double, VoucherKinds> vouchers{};

    /// All eight together, to two places.
    double Total() const;
};

/// `amount` to two places, half away from zero. What binary fractions add behind the sixth place does not
/// count, so that 1.005 x 100 and 100.5 are rounded alike.
double Rounded(double amount);
/// The same as text, grouped, with two decimals: what a money box shows.
QString MoneyText(double amount);

/// The fee after a discount in percent. A discount above 100 gives a negative fee.
double NetFee(double basicFee, double discount);
/// The discount as an amount, from the already rounded net fee.
double HardDiscount(double basicFee, double netFee);
/// The fee after a discount in money.
double NetFeeAfterAmount(double basicFee, double hardDiscount);
/// A discount in money as percent of the fee, to two places; 0 without a fee.
double DiscountOfAmount(double basicFee, double hardDiscount);
/// Net fee and tax; the tax applies to the rounded net fee.
double TotalDue(double netFee, double taxRate);
double Owed(double totalDue, double paid);

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

/// "No", "Part", "Yes" or "In Credit" for a stored row, from what is due unrounded. `paid` is empty where a
/// payment column was NULL. A free course with nothing paid reads "Yes".
QString ListStatusWord(double basicFee, double discount, double taxRate, std::optional<double> paid);
/// The same word from the rounded boxes of the payment screen, where nothing paid reads "No" even for a
/// free course.
QString ScreenStatusWord(double paid, double totalDue);
} // namespace Fees
