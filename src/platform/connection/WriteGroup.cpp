// A part of Connection.h.
#include "platform/connection/Connection.h"
#include "platform/connection/Engine.h"
#include "platform/connection/OneStep.h"
#include "platform/connection/Painting.h"

#include <chrono>

namespace
{
constexpr qint64 longestHold = 250; ///< the most milliseconds that others wait for the group

WriteGroup *g_group = nullptr;

qint64 SteadyMilliseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}
} // namespace

WriteGroup::WriteGroup(Connection &connection)
{
    if (g_group || OneStep::IsRunning(connection))
        return;
    m_connection = &connection;
    g_group = this;
}

WriteGroup::~WriteGroup()
{
    Finish();
    if (g_group == this)
        g_group = nullptr;
}

bool WriteGroup::Tick()
{
    const bool isDue = m_open && SteadyMilliseconds() - m_begun >= longestHold;
    if (isDue)
        Painting::Keep(); // the disk may take its time
    return isDue ? Finish() : m_undone.isEmpty() || m_connection->Fail(m_undone);
}

bool WriteGroup::Finish()
{
    if (!m_undone.isEmpty())
        return m_connection->Fail(m_undone);
    return !m_open || Commit();
}

bool WriteGroup::Undo()
{
    if (!m_open)
        return true;
    EngineErrors errors;
    const bool done = m_connection->m_engine->Rollback(errors);
    m_open = m_connection->m_engine->IsInTransaction();
    return done || m_connection->Fail(errors);
}

bool WriteGroup::CommitRunning()
{
    return !g_group || g_group->Finish();
}

bool WriteGroup::IsRunning(const Connection &connection)
{
    return g_group && g_group->m_connection == &connection;
}

bool WriteGroup::BeforeWrite(Connection &connection, EngineErrors &errors)
{
    WriteGroup *group = g_group;
    if (!group || group->m_connection != &connection)
        return true;
    if (group->m_open && !connection.m_engine->IsInTransaction())
        group->Commit(); // which fails, and notes why
    errors = group->m_undone;
    if (!errors.isEmpty() || group->m_open)
        return errors.isEmpty();
    group->m_open = connection.m_engine->Begin(errors);
    group->m_begun = SteadyMilliseconds();
    return group->m_open;
}

void WriteGroup::Leave(Connection &connection)
{
    if (g_group && g_group->m_connection == &connection) {
        g_group->Finish();
        g_group->m_open = false;
    }
}

bool WriteGroup::Commit()
{
    EngineErrors errors;
    const bool done = m_connection->m_engine->Commit(errors);
    m_open = m_connection->m_engine->IsInTransaction();
    if (!done && !m_open)
        m_undone = errors;
    return done || m_connection->Fail(errors);
}
