#include "exchange/CsvProgress.h"

#include "platform/Dialogs.h"

namespace
{
constexpr qint64 shownEvery = 100; // milliseconds
}

CsvProgress::CsvProgress(std::function<void(int, int)> show)
    : m_show(std::move(show))
{
}

void CsvProgress::Begin(int maximum)
{
    m_maximum = maximum;
    m_value = 0;
    Show();
}

void CsvProgress::SetValue(int done)
{
    m_value = done;
    if (done == m_maximum || m_sinceShown.elapsed() >= shownEvery)
        Show();
}

void CsvProgress::Show()
{
    m_sinceShown.start();
    if (m_show)
        m_show(m_value, m_maximum);
    Dialogs::ServeEvents();
}
