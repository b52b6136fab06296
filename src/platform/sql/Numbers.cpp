#include "platform/sql/Numbers.h"

#include <QLocale>

#include <cmath>

QString ShortestNumber(double value)
{
    constexpr double ordinary = 1e15;
    if (!std::isfinite(value) || value == 0)
        return QStringLiteral("0");
    const char format = std::abs(value) < ordinary ? 'f' : 'g';
    return QString::number(value, format, QLocale::FloatingPointShortest);
}
