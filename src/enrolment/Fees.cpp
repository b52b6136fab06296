#include "enrolment/Fees.h"

#include "database/GlobalCode.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
// Fees and rates have two places each, so a product of them has six at most. What stands behind is the
// noise of binary fractions: with it, a course of 90 less 30 would never count as paid with 60.
constexpr int exactPlaces = 6;
constexpr double noise = 1e-6;

constexpr double wholeFee = 100;

double WithoutNoise(double amount)
{
    return TextValue(FormatNumber(amount, exactPlaces));
}

bool IsMore(double a, double b)
{
    return a - b > noise;
}

bool IsSame(double a, double b)
{
    return std::abs(a - b) <= noise;
}

double Less(double basicFee, double discount)
{
    return basicFee - (basicFee / 100) * discount;
}

double WithTax(double netFee, double taxRate)
{
    return netFee + (netFee / 100) * taxRate;
}

/// An amount as percent of the fee; 0 where either is missing.
double ShareOfFee(double basicFee, double amount)
{
    return basicFee > 0 && amount > 0 ? (amount / basicFee) * 100 : 0;
}
} // namespace

double Fees::Payments::Total() const
{
    return Rounded(std::accumulate(vouchers.begin(), vouchers.end(), 0.0) + cash + cheque + creditCard);
}

double Fees::Rounded(double amount)
{
    return CurrencyValue(FormatNumber(amount, exactPlaces));
}

QString Fees::MoneyText(double amount)
{
    return FormatNumber(WithoutNoise(amount));
}

double Fees::NetFee(double basicFee, double discount)
{
    return Rounded(Less(basicFee, discount));
}

double Fees::HardDiscount(double basicFee, double netFee)
{
    return Rounded(basicFee - netFee);
}

double Fees::NetFeeAfterAmount(double basicFee, double hardDiscount)
{
    return Rounded(basicFee - hardDiscount);
}

double Fees::DiscountOfAmount(double basicFee, double hardDiscount)
{
    return Rounded(ShareOfFee(basicFee, hardDiscount));
}

double Fees::TotalDue(double netFee, double taxRate)
{
    return Rounded(WithTax(netFee, taxRate));
}

double Fees::Owed(double totalDue, double paid)
{
    return Rounded(totalDue - paid);
}

double Fees::RaisedByAmount(double percent, double basicFee, double hardDiscount)
{
    const double share = ShareOfFee(basicFee, hardDiscount);
    return IsMore(share, percent) ? std::min(share, wholeFee) : percent;
}

Fees::DiscountChoice Fees::ChooseDiscount(double basicFee, const std::vector<Characteristic> &characteristics)
{
    DiscountChoice choice;
    if (basicFee <= 0)
        return choice;
    for (const Characteristic &characteristic : characteristics) {
        // The share is compared before it is cut: of two amounts above the fee the later one gives the name.
        const double share = ShareOfFee(basicFee, characteristic.hardDiscount);
        if (IsMore(share, choice.percent))
            choice = {std::min(share, wholeFee), characteristic.name};
        if (IsMore(characteristic.percentage, choice.percent))
            choice = {characteristic.percentage, characteristic.name};
    }
    return choice;
}

QString Fees::ListStatusWord(double basicFee, double discount, double taxRate, std::optional<double> paid)
{
    const double due = WithTax(Less(basicFee, discount), taxRate);
    const double sum = paid.value_or(0);
    if (IsSame(sum, 0) && IsMore(due, 0))
        return QStringLiteral("No");
    if (IsMore(sum, due))
        return QStringLiteral("In Credit");
    return IsSame(sum, due) ? QStringLiteral("Yes") : QStringLiteral("Part");
}

QString Fees::ScreenStatusWord(double paid, double totalDue)
{
    if (paid == 0)
        return QStringLiteral("No");
    if (paid > totalDue)
        return QStringLiteral("In Credit");
    return paid == totalDue ? QStringLiteral("Yes") : QStringLiteral("Part");
}
