#include "platform/connection/Connection.h"

#include "platform/connection/Engine.h"
#include "platform/connection/NameOrder.h"
#include "platform/connection/OneStep.h"

namespace
{
/// A server sorts by a language of its own.
NameOrder::SortedByEngine SortedBy(DatabaseKind kind)
{
    return kind == DatabaseKind::File ? NameOrder::SortedByEngine::Ascii : NameOrder::SortedByEngine::None;
}
} // namespace

EngineErrors Connection::NotOpen()
{
    return {{3709, QStringLiteral("Veltrane Connection"),
             QStringLiteral("The connection cannot be used: no database is open."), QString()}};
}

Connection::Connection() = default;
Connection::~Connection()
{
    Close();
}

bool Connection::Open(const QString &connectionText, const ServerLogon &logon)
{
    Close();
    EngineErrors errors;
    m_engine = OpenEngine(connectionText, logon, errors);
    return m_engine != nullptr || Fail(errors);
}

void Connection::Close()
{
    OneStep::Leave(*this);
    WriteGroup::Leave(*this);
    ReadSnapshot::Leave(*this);
    m_engine.reset();
}

bool Connection::IsOpen() const
{
    return m_engine != nullptr;
}

QString Connection::ConnectionText() const
{
    return m_engine ? m_engine->ConnectionText() : QString();
}

DatabaseKind Connection::Kind() const
{
    return m_engine ? m_engine->Kind() : DatabaseKind::None;
}

bool Connection::Execute(const QString &sql)
{
    if (!Ready(sql))
        return false;
    ReadSnapshot::Leave(*this);
    EngineErrors errors;
    const bool mayWrite = !OneStep::RefusesWrite(*this, errors) && WriteGroup::BeforeWrite(*this, errors);
    return (mayWrite && m_engine->Execute(sql, errors)) || Fail(errors);
}

std::optional<Recordset> Connection::OpenRecordset(const QString &sql)
{
    if (!Ready(sql))
        return std::nullopt;
    EngineErrors errors;
    Recordset result;
    if (m_engine->OpenRecordset(sql, result, errors))
        return NameOrder::Sorted(sql, result, SortedBy(m_engine->Kind()));
    Fail(errors);
    return std::nullopt;
}

bool Connection::ReadInPieces(const QString &sql, const TakeRows &take)
{
    if (!Ready(sql))
        return false;
    EngineErrors errors;
    return m_engine->ReadInPieces(sql, take, errors) || Fail(errors);
}

const EngineErrors &Connection::Errors() const
{
    return m_errors;
}

void Connection::ObserveStatements(std::function<void(const QString &)> observer)
{
    m_observer = std::move(observer);
}

bool Connection::Fail(const EngineErrors &errors)
{
    m_errors = errors;
    return false;
}

bool Connection::Ready(const QString &sql)
{
    if (m_observer)
        m_observer(sql);
    return m_engine != nullptr || Fail(NotOpen());
}
