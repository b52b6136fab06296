#include "platform/connection/OneStep.h"

#include "platform/connection/Connection.h"
#include "platform/connection/Engine.h"

namespace
{
OneStep *g_step = nullptr;
bool g_isGuarding = true;

EngineErrors TakenBack()
{
    return {{1, QStringLiteral("Veltrane Connection"),
             QStringLiteral(
                 "The last change was not stored, since a question came in between. Please make it again."),
             QString()}};
}
} // namespace

OneStep::OneStep(Connection &connection, const QString &key)
    : m_connection(connection)
    , m_isInner(g_step != nullptr)
{
    if (!g_isGuarding) {
        m_hasBegun = true;
        return;
    }
    if (m_isInner) {
        m_hasBegun = Lock(key);
        return;
    }
    g_step = this;
    m_hasBegun = Begin(key);
    if (!m_hasBegun)
        TakeBack();
}

OneStep::~OneStep()
{
    TakeBack();
    if (g_step == this)
        g_step = nullptr;
}

bool OneStep::Keep()
{
    if (!g_isGuarding || m_isInner || m_isInGroup)
        return true;
    EngineErrors errors = TakenBack();
    const bool isKept = m_isOpen && m_connection.m_engine->Commit(errors);
    if (isKept)
        m_isOpen = false;
    return isKept || m_connection.Fail(errors);
}

bool OneStep::IsRunning(const Connection &connection)
{
    return g_step && &g_step->m_connection == &connection;
}

void OneStep::TakeBackRunning()
{
    if (g_step)
        g_step->TakeBack();
}

void OneStep::SetGuarding(bool isOn)
{
    g_isGuarding = isOn;
}

bool OneStep::RefusesWrite(const Connection &connection, EngineErrors &errors)
{
    if (!IsRunning(connection) || g_step->m_isInGroup || g_step->m_isOpen)
        return false;
    errors = TakenBack();
    return true;
}

void OneStep::Leave(const Connection &connection)
{
    if (IsRunning(connection))
        g_step->TakeBack();
}

bool OneStep::Begin(const QString &key)
{
    if (!m_connection.IsOpen())
        return m_connection.Fail(Connection::NotOpen());
    ReadSnapshot::Leave(m_connection);
    m_isInGroup = WriteGroup::IsRunning(m_connection);
    if (m_isInGroup)
        return BeginInGroup(key);
    EngineErrors errors;
    m_isOpen = m_connection.m_engine->Begin(errors);
    return m_isOpen ? Lock(key) : m_connection.Fail(errors);
}

/// A group that waited for one key while holding others could end in a deadlock, so it releases what it holds
/// first.
bool OneStep::BeginInGroup(const QString &key)
{
    EngineErrors errors;
    if (!WriteGroup::BeforeWrite(m_connection, errors))
        return m_connection.Fail(errors);
    bool isFree = false;
    if (!m_connection.m_engine->TryLock(key, isFree, errors))
        return m_connection.Fail(errors);
    if (isFree)
        return true;
    if (!WriteGroup::CommitRunning())
        return false;
    return WriteGroup::BeforeWrite(m_connection, errors) ? Lock(key) : m_connection.Fail(errors);
}

bool OneStep::Lock(const QString &key)
{
    EngineErrors errors;
    return m_connection.m_engine->Lock(key, errors) || m_connection.Fail(errors);
}

void OneStep::TakeBack()
{
    if (!m_isOpen)
        return;
    EngineErrors ignored; // a lost server undoes it by itself
    m_connection.m_engine->Rollback(ignored);
    m_isOpen = false;
}
