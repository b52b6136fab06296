#include "enrolment/Money.h"

#include "database/values/GlobalCode.h"

#include <algorithm>
#include <cmath>

Money Money::Of(double units)
{
    constexpr double most =
        1e12; // a hundred per cent of it in hundredths of a percent still is a whole number
    // Nearly every amount is whole hundredths already, and needs no decimal text to be rounded by.
    const qint64 whole = std::abs(units) < most ? qRound64(units * 100) : 0;
    if (static_cast<double>(whole) / 100 == units)
        return Money(whole);
    return Money(qRound64(std::clamp(CurrencyValue(FormatNumber(units)), -most, most) * 100));
}

QString Money::Text() const
{
    return FormatNumber(Units());
}
