#include "platform/desktop/Clock.h"

namespace
{
QDateTime g_stopped;
}

QDateTime Clock::Now()
{
    return g_stopped.isValid() ? g_stopped : QDateTime::currentDateTime();
}

QDate Clock::Today()
{
    return Now().date();
}

void Clock::StopAt(const QDateTime &moment)
{
    g_stopped = moment;
}
