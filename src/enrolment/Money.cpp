#include "enrolment/Money.h"

#include "database/GlobalCode.h"

#include <algorithm>

Money Money::Of(double units)
{
    constexpr double most =
        1e12; // a hundred per cent of it in hundredths of a percent still is a whole number
    return Money(qRound64(std::clamp(CurrencyValue(FormatNumber(units)), -most, most) * 100));
}

QString Money::Text() const
{
    return FormatNumber(Units());
}
