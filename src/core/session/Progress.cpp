#include "core/session/Progress.h"

#include "platform/desktop/Dialogs.h"

Progress::Progress(Shown show, int showEvery)
    : m_show(std::move(show))
    , m_showEvery(showEvery)
{
}

void Progress::Begin(int maximum)
{
    m_maximum = maximum;
    m_value = 0;
    Show();
}

void Progress::SetValue(int done)
{
    m_value = done;
    if (done == m_maximum || !m_sinceShown.isValid() || m_sinceShown.elapsed() >= m_showEvery)
        Show();
}

bool Progress::operator()(int done, int maximum)
{
    m_maximum = maximum;
    SetValue(done);
    return !m_cancelled;
}

void Progress::Show()
{
    m_sinceShown.start();
    if (m_show)
        m_show(m_value, m_maximum);
    Dialogs::ServeEvents();
}
