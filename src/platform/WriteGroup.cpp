#include "platform/Connection.h"
#include "platform/Engine.h"

#include <chrono>

namespace
{
constexpr qint64 longestHold = 250; ///< milliseconds that others wait for the group at most

WriteGroup *g_running = nullptr;

qint64 SteadyMilliseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}
} // namespace

WriteGroup::WriteGroup(Connection &connection)
{
    if (g_running)
        return;
    m_connection = &connection;
    g_running = this;
}

WriteGroup::~WriteGroup()
{
    Finish();
    if (g_running == this)
        g_running = nullptr;
}

bool WriteGroup::Tick()
{
    return !m_open || SteadyMilliseconds() - m_begun < longestHold || Commit();
}

bool WriteGroup::Finish()
{
    return !m_open || Commit();
}

bool WriteGroup::CommitRunning()
{
    return !g_running || g_running->Finish();
}

bool WriteGroup::BeforeWrite(Connection &connection, EngineErrors &errors)
{
    WriteGroup *group = g_running;
    if (!group || group->m_connection != &connection || group->m_open)
        return true;
    group->m_open = connection.m_engine->Begin(errors);
    group->m_begun = SteadyMilliseconds();
    return group->m_open;
}

void WriteGroup::Leave(Connection &connection)
{
    if (g_running && g_running->m_connection == &connection) {
        g_running->Finish();
        g_running->m_open = false;
    }
}

bool WriteGroup::Commit()
{
    EngineErrors errors;
    const bool done = m_connection->m_engine->Commit(errors);
    m_open = m_connection->m_engine->IsInTransaction();
    return done || m_connection->Fail(errors);
}
