#include "database/values/DecodeDateFunc.h"

#include "platform/desktop/Clock.h"

#include <cmath>

namespace
{
constexpr int yearUnit = 10000;
constexpr int monthUnit = 100;
constexpr int hourUnit = 100;

void TodayForNone(int &value)
{
    if (value == 0)
        value = DateToInt(Clock::Today());
}
} // namespace

int DateToInt(QDate date)
{
    return date.isValid() ? date.year() * yearUnit + date.month() * monthUnit + date.day() : 0;
}

QString IntToDateText(int &value)
{
    const int day = DateDay(value);
    return TwoDigits(day) % u'/' % TwoDigits(DateMonth(value)) % u'/' % QString::number(DateYear(value));
}

QString IntToDateText(int &&value)
{
    return IntToDateText(value);
}

QString GeneralDateText(const QDateTime &moment)
{
    return moment.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
}

QDate IntToDate(int value)
{
    return value == 0 ? QDate() : QDate(DateYear(value), DateMonth(value), DateDay(value));
}

QString TwoDigits(int n)
{
    const QString text = QString::number(n);
    return text.size() == 1 ? u'0' % text : text;
}

QString LongToTimeText(int value)
{
    const int hour = static_cast<int>(std::nearbyint(value / static_cast<double>(hourUnit)));
    return TwoDigits(hour) % u':' % TwoDigits(value - hour * hourUnit);
}

int DateYear(int &value)
{
    TodayForNone(value);
    return value / yearUnit;
}

int DateMonth(int &value)
{
    TodayForNone(value);
    return value % yearUnit / monthUnit;
}

int DateDay(int &value)
{
    TodayForNone(value);
    return value % monthUnit;
}

int TimeToInt(QTime time)
{
    return time.isValid() ? time.hour() * hourUnit + time.minute() : 0;
}

QString IntToTimeText(int value)
{
    return TwoDigits(TimeHours(value)) % u':' % TwoDigits(TimeMinutes(value));
}

int TimeHours(int value)
{
    return value / hourUnit;
}

int TimeMinutes(int value)
{
    return value % hourUnit;
}
