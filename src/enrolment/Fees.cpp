#include "enrolment/Fees.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace
{
constexpr double wholeFee = 100;
/// 100 % in hundredths of a percent.
constexpr qint64 whole = 10000;

/// Unrounded values are compared to all their places but the last bits: binary fractions put those there, and
/// 33.30 less 10 % would not be paid with 29.97. `size` is that of the largest value they come from.
bool IsSame(double a, double b, double size)
{
    constexpr double lastBits = 8 * std::numeric_limits<double>::epsilon();
    return std::abs(a - b) <= lastBits * std::abs(size);
}

bool IsMore(double a, double b, double size)
{
    return a > b && !IsSame(a, b, size);
}

/// Half away from zero.
qint64 RoundedQuotient(qint64 dividend, qint64 divisor)
{
    const qint64 half = dividend < 0 ? -divisor / 2 : divisor / 2;
    return (dividend + half) / divisor;
}

/// `percent` read to two places, in hundredths of a percent. Cut where no rate can be, lest a product
/// overflows.
qint64 PartsOf(double percent)
{
    constexpr double most = 1e6;
    return Money::Of(std::clamp(percent, -most, most)).Hundredths();
}

/// So many hundredths of a percent of an amount. The whole part is taken apart, since the product of both
/// may be too large.
Money Share(Money amount, qint64 parts)
{
    const qint64 hundredths = amount.Hundredths();
    return Money::OfHundredths(hundredths / whole * parts +
                               RoundedQuotient(hundredths % whole * parts, whole));
}

/// An amount as percent of the fee; 0 where either is missing.
double ShareOfFee(double basicFee, double amount)
{
    return basicFee > 0 && amount > 0 ? (amount / basicFee) * 100 : 0;
}
} // namespace

Money Fees::Payments::Total() const
{
    return std::accumulate(kinds.begin(), kinds.end(), Money());
}

Fees::Payments Fees::operator+(Payments a, const Payments &b)
{
    for (size_t kind = 0; kind < PaymentKinds; ++kind)
        a[kind] += b[kind];
    return a;
}

Money Fees::NetFee(Money basicFee, double discount)
{
    return Share(basicFee, whole - PartsOf(discount));
}

double Fees::DiscountOfAmount(Money basicFee, Money hardDiscount)
{
    if (basicFee <= Money() || hardDiscount <= Money())
        return 0;
    const qint64 parts = RoundedQuotient(hardDiscount.Hundredths() * whole, basicFee.Hundredths());
    return Money::OfHundredths(parts).Units();
}

Money Fees::TotalDue(Money netFee, double taxRate)
{
    return Share(netFee, whole + PartsOf(taxRate));
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): shares of unrounded fees, so no `Money`.
double Fees::RaisedByAmount(double percent, double basicFee, double hardDiscount)
{
    const double share = ShareOfFee(basicFee, hardDiscount);
    return IsMore(share, percent, share) ? std::min(share, wholeFee) : percent;
}

Fees::DiscountChoice Fees::ChooseDiscount(double basicFee, const std::vector<Characteristic> &characteristics)
{
    DiscountChoice choice;
    if (basicFee <= 0)
        return choice;
    for (const Characteristic &characteristic : characteristics) {
        // The share is compared before it is cut: of two amounts above the fee the later one gives the name.
        const double share = ShareOfFee(basicFee, characteristic.hardDiscount);
        if (IsMore(share, choice.percent, share))
            choice = {std::min(share, wholeFee), characteristic.name};
        if (IsMore(characteristic.percentage, choice.percent, choice.percent))
            choice = {characteristic.percentage, characteristic.name};
    }
    return choice;
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): compares unrounded amounts, so no `Money`.
QString Fees::ListStatusWord(double basicFee, double discount, double taxRate, std::optional<double> paid)
{
    const double net = basicFee - (basicFee / 100) * discount;
    const double due = net + (net / 100) * taxRate;
    const double sum = paid.value_or(0);
    const double size = std::max(std::abs(basicFee), std::abs(sum));
    if (sum == 0 && IsMore(due, 0, size))
        return QStringLiteral("No");
    if (IsMore(sum, due, size))
        return QStringLiteral("In Credit");
    return IsSame(sum, due, size) ? QStringLiteral("Yes") : QStringLiteral("Part");
}

QString Fees::ScreenStatusWord(Money paid, Money totalDue)
{
    if (paid == Money())
        return QStringLiteral("No");
    if (paid > totalDue)
        return QStringLiteral("In Credit");
    return paid == totalDue ? QStringLiteral("Yes") : QStringLiteral("Part");
}
