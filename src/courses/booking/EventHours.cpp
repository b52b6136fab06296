#include "courses/booking/EventHours.h"

#include "database/values/DecodeDateFunc.h"

QString TimesText(int from, int to)
{
    return IntToTimeText(from) % u" - " % IntToTimeText(to);
}
