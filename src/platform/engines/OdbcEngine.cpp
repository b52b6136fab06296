#include "platform/engines/OdbcEngine.h"

#include "platform/connection/Painting.h"
#include "platform/engines/OdbcErrors.h"
#include "platform/engines/OdbcStatement.h"
#include "platform/engines/OdbcText.h"
#include "platform/sql/SqlDialect.h"

#include <QScopeGuard>

#include <chrono>
#include <future>

namespace
{
/// Settings that statements and results rely on, and that a server, a catalogue or a role may have set
/// otherwise: a backslash in a text is a plain character, doubles arrive in full precision, nobody waits for
/// another workstation for ever.
const QString postgreSqlSettings = QStringLiteral(
    "SET standard_conforming_strings = on; SET extra_float_digits = 1; SET transform_null_equals = off; "
    "SET default_transaction_isolation = 'read committed'; SET lock_timeout = 10000");
/// The same for SQL Server: names may be quoted, a text too long for its column is refused and not cut, long
/// texts arrive whole, and a statement that fails undoes only itself.
const QString sqlServerSettings = QStringLiteral(
    "SET QUOTED_IDENTIFIER ON; SET ANSI_NULLS ON; SET ANSI_PADDING ON; SET ANSI_WARNINGS ON; "
    "SET ARITHABORT ON; SET CONCAT_NULL_YIELDS_NULL ON; SET NUMERIC_ROUNDABORT OFF; "
    "SET IMPLICIT_TRANSACTIONS OFF; SET XACT_ABORT OFF; SET ROWCOUNT 0; SET TEXTSIZE 2147483647; "
    "SET TRANSACTION ISOLATION LEVEL READ COMMITTED; SET LOCK_TIMEOUT 10000");

const QString postgreSqlKeys = QStringLiteral(
    "SELECT c.relname, quote_ident(c.relname) || '.' || quote_ident(a.attname) FROM pg_index i "
    "JOIN pg_class c ON c.oid = i.indrelid "
    "JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum = i.indkey[0] "
    "WHERE i.indisprimary AND i.indnatts = 1 AND pg_table_is_visible(c.oid) "
    // Tables without a key, such as bookings and links, keep the order in which their rows were stored: by
    // transaction, by statement within it, and by place for what one statement stored.
    "UNION ALL SELECT c.relname, replace('age(@.xmin) DESC, @.cmin::text::bigint, @.ctid', '@', "
    "quote_ident(c.relname)) FROM pg_class c "
    "WHERE c.relkind = 'r' AND c.relpersistence = 'p' AND pg_table_is_visible(c.oid) "
    "AND c.relnamespace NOT IN ('pg_catalog'::regnamespace, 'information_schema'::regnamespace) "
    "AND NOT EXISTS (SELECT 1 FROM pg_index i WHERE i.indrelid = c.oid AND i.indisprimary)");
const QString sqlServerKeys =
    QStringLiteral("SELECT OBJECT_NAME(i.object_id), QUOTENAME(OBJECT_NAME(i.object_id)) + '.' + "
                   "QUOTENAME(COL_NAME(c.object_id, c.column_id)) FROM sys.indexes i "
                   "JOIN sys.index_columns c ON c.object_id = i.object_id AND c.index_id = i.index_id "
                   "WHERE i.is_primary_key = 1 AND c.key_ordinal = 1");

/// Runs work that waits for a server or the network on a separate thread, and keeps the windows painted
/// meanwhile.
bool WhilePainting(const std::function<bool()> &work)
{
    using namespace std::chrono_literals;
    std::future<bool> done = std::async(std::launch::async, work);
    while (done.wait_for(20ms) != std::future_status::ready)
        Painting::Keep();
    return done.get();
}

/// Asks for a lock that ends with the transaction; "got" is 1 if it was granted.
QString LockText(DatabaseKind kind, const QString &key, bool waits)
{
    constexpr int longestWait = 10'000; ///< milliseconds, the same as for a row
    const QString quoted = u'\'' % QString(key).replace(u'\'', QStringLiteral("''")) % u'\'';
    const QString hash = u"hashtextextended(" % quoted % u", 0)";
    if (kind == DatabaseKind::PostgreSql)
        return waits ? QString(u"SELECT 1 AS got FROM (SELECT pg_advisory_xact_lock(" % hash % u")) AS l")
                     : QString(u"SELECT CASE WHEN pg_try_advisory_xact_lock(" % hash %
                               u") THEN 1 ELSE 0 END AS got");
    return u"SET NOCOUNT ON; DECLARE @got int; EXEC @got = sp_getapplock @Resource = N" % quoted %
           u", @LockMode = 'Exclusive', @LockOwner = 'Transaction', @LockTimeout = " %
           QString::number(waits ? longestWait : 0) %
           u"; SELECT CASE WHEN @got >= 0 THEN 1 ELSE 0 END AS got";
}

QString LossText(const QString &told)
{
    return u"The connection to the server was lost: it was stopped, or the network failed. What was not yet "
           "stored must be done again; the next attempt connects again. (" %
           told % u')';
}
} // namespace

OdbcEngine::OdbcEngine(const QString &connectionText, const QString &driverText)
    : m_text(connectionText)
    , m_driverText(driverText)
{
}

std::unique_ptr<Engine> OdbcEngine::Open(const ConnectionParts &parts, const QString &connectionText,
                                         EngineErrors &errors)
{
    QString driverText;
    if (!WhilePainting([&] { return OdbcDriverText(parts, driverText, errors); }))
        return nullptr;
    std::unique_ptr<OdbcEngine> engine(new OdbcEngine(connectionText, driverText));
    if (!engine->Connect(errors))
        return nullptr;
    return engine;
}

bool OdbcEngine::Connect(EngineErrors &errors)
{
    if (!WhilePainting([&] { return m_session.Open(m_driverText, errors); }))
        return false;
    const bool isPostgreSql = m_session.ServerName() == QStringLiteral("PostgreSQL");
    m_kind = isPostgreSql ? DatabaseKind::PostgreSql : DatabaseKind::SqlServer;
    if (!ApplySettings(errors))
        return false;
    LearnKeys();
    return true;
}

/// A connection without its settings is unusable: with the backslash as an escape, a text could end early and
/// the rest of it run as a statement.
bool OdbcEngine::ApplySettings(EngineErrors &errors)
{
    const bool applied =
        Run(m_kind == DatabaseKind::PostgreSql ? postgreSqlSettings : sqlServerSettings, errors);
    if (!applied)
        m_session.Close();
    return applied;
}

/// Without the keys the rows of some lists come in another order, which is no reason to refuse the
/// connection.
void OdbcEngine::LearnKeys()
{
    m_keys.clear();
    Recordset keys;
    EngineErrors ignored;
    if (!Read(m_kind == DatabaseKind::PostgreSql ? postgreSqlKeys : sqlServerKeys, keys, ignored))
        return;
    for (const Recordset::Row row : keys)
        m_keys.insert(row.Text(0).toLower(), row.Text(1));
}

bool OdbcEngine::Execute(const QString &sql, EngineErrors &errors)
{
    QString engineSql;
    return Translate(sql, engineSql, errors) && Revive(errors) && Run(engineSql, errors);
}

bool OdbcEngine::OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors)
{
    QString engineSql;
    return Translate(sql, engineSql, errors) && Revive(errors) && Read(engineSql, result, errors);
}

/// SQL Server allows one open result per connection, so all rows are read before the first is handed over.
bool OdbcEngine::ReadInPieces(const QString &sql, const TakeRows &take, EngineErrors &errors)
{
    QString engineSql;
    if (!Translate(sql, engineSql, errors) || !Revive(errors))
        return false;
    if (m_kind == DatabaseKind::PostgreSql)
        return FetchInPieces(engineSql, take, errors);
    Recordset rows;
    bool isWanted = true;
    const auto goesOn = [&] { return isWanted = take({}, 0); };
    if (!Read(engineSql, rows, goesOn, errors))
        return false;
    if (isWanted)
        take(rows, 0);
    return true;
}

/// On PostgreSQL the result is read through a cursor: otherwise its driver fetches all rows before it returns
/// the first.
bool OdbcEngine::FetchInPieces(const QString &engineSql, const TakeRows &take, EngineErrors &errors)
{
    constexpr int firstPiece = 32;
    constexpr int laterPieces = 512;
    const QString name = u"pieces" % QString::number(++m_cursors);
    if (!Run(u"DECLARE " % name % u" NO SCROLL CURSOR WITH HOLD FOR " % engineSql, errors))
        return false;
    const auto close = qScopeGuard([&] {
        EngineErrors ignored;
        Run(u"CLOSE " % name, ignored);
    });
    int given = 0;
    for (int wanted = firstPiece;; wanted = laterPieces) {
        Recordset rows;
        if (!Read(u"FETCH " % QString::number(wanted) % u" FROM " % name, rows, errors))
            return false;
        if (!take(rows, given) || rows.RowCount() < wanted)
            return true;
        given += rows.RowCount();
    }
}

bool OdbcEngine::Read(const QString &engineSql, Recordset &result, EngineErrors &errors)
{
    return Read(
        engineSql, result, [] { return true; }, errors);
}

bool OdbcEngine::Read(const QString &engineSql, Recordset &result, const std::function<bool()> &goesOn,
                      EngineErrors &errors)
{
    return ReadStatement(engineSql, result, goesOn, errors) || Fail(errors);
}

bool OdbcEngine::ReadStatement(const QString &engineSql, Recordset &result,
                               const std::function<bool()> &goesOn, EngineErrors &errors)
{
    constexpr int askedEvery = 256;
    OdbcStatement statement(m_session);
    if (!statement.Run(engineSql, errors))
        return false;
    const auto columns = statement.Describe(m_kind == DatabaseKind::SqlServer);
    Recordset::Builder rows(columns);
    OdbcStatement::Step step = statement.Next(errors);
    for (int row = 1; step == OdbcStatement::Step::Row; ++row) {
        if (!statement.AddRow(rows, *columns, errors))
            return false;
        if (row % askedEvery == 0 && !goesOn())
            return true;
        step = statement.Next(errors);
    }
    result = rows.Finish();
    return step == OdbcStatement::Step::End;
}

bool OdbcEngine::Begin(EngineErrors &errors)
{
    if (!Revive(errors))
        return false;
    m_locks.clear();
    m_isInTransaction = m_kind == DatabaseKind::SqlServer
                            ? Run(QStringLiteral("BEGIN TRANSACTION"), errors)
                            : m_session.SetAutoCommit(false, errors) || Fail(errors);
    return m_isInTransaction;
}

bool OdbcEngine::Commit(EngineErrors &errors)
{
    if (m_isInTransaction)
        return EndTransaction(true, errors);
    errors = OdbcErrors::One(OdbcErrors::unnumbered,
                             QStringLiteral("The last change was not stored: the server was lost, or ended "
                                            "the transaction itself. Please make it again."));
    return false;
}

bool OdbcEngine::Rollback(EngineErrors &errors)
{
    return !m_isInTransaction || EndTransaction(false, errors);
}

bool OdbcEngine::EndTransaction(bool keeps, EngineErrors &errors)
{
    m_isInTransaction = false;
    if (m_kind == DatabaseKind::SqlServer)
        return Run(keeps ? QStringLiteral("COMMIT TRANSACTION") : QStringLiteral("ROLLBACK TRANSACTION"),
                   errors);
    const bool ended = m_session.EndTransaction(keeps, errors);
    EngineErrors ignored; // the error at the end is reported
    m_session.SetAutoCommit(true, ended ? errors : ignored);
    return ended || Fail(errors);
}

bool OdbcEngine::Lock(const QString &key, EngineErrors &errors)
{
    bool isFree = false;
    return TakeLock(key, true, isFree, errors);
}

bool OdbcEngine::TryLock(const QString &key, bool &isFree, EngineErrors &errors)
{
    return TakeLock(key, false, isFree, errors);
}

/// Both servers release such a lock when the transaction ends, whichever way it ends.
bool OdbcEngine::TakeLock(const QString &key, bool waits, bool &isFree, EngineErrors &errors)
{
    isFree = m_locks.contains(key);
    if (isFree)
        return true;
    Recordset answer;
    if (!Read(LockText(m_kind, key, waits), answer, errors))
        return false;
    isFree = !answer.IsEmpty() && answer.First().Long(0) == 1;
    if (isFree)
        m_locks.insert(key);
    else if (waits)
        errors =
            OdbcErrors::One(OdbcErrors::lockTimeout,
                            QStringLiteral("Another workstation kept the same records locked for too long. "
                                           "Nothing was stored."));
    return isFree || !waits;
}

bool OdbcEngine::Run(const QString &engineSql, EngineErrors &errors)
{
    return RunStatement(engineSql, errors) || Fail(errors);
}

bool OdbcEngine::RunStatement(const QString &engineSql, EngineErrors &errors)
{
    OdbcStatement statement(m_session);
    return statement.Run(engineSql, errors) && statement.PassResults(errors);
}

/// Connects again after the server was restarted or the network failed. The failure itself has already been
/// reported.
bool OdbcEngine::Revive(EngineErrors &errors)
{
    if (!m_isLost)
        return true;
    m_session.Close();
    m_isLost = false;
    const bool connected = Connect(errors);
    m_isLost = !connected;
    return connected;
}

/// Asks the server what state the failure has left the session in. The failed statement must be closed by
/// then: SQL Server's driver allows one open result, and would refuse the question as if the server were
/// lost.
bool OdbcEngine::Fail(EngineErrors &errors)
{
    // SQL Server undoes the whole transaction at some failures, such as a deadlock.
    const bool isSqlServer = m_kind == DatabaseKind::SqlServer;
    Recordset answer;
    EngineErrors ignored;
    m_isLost = !ReadStatement(
        isSqlServer ? QStringLiteral("SELECT @@TRANCOUNT") : QStringLiteral("SELECT 1"), answer,
        [] { return true; }, ignored);
    if (m_isLost) { // the driver would report a later commit as successful
        m_isInTransaction = false;
        errors.first().description = LossText(errors.first().description);
    } else if (isSqlServer) {
        m_isInTransaction = m_isInTransaction && !answer.IsEmpty() && answer.First().Long(0) > 0;
    }
    return false;
}

bool OdbcEngine::Translate(const QString &sql, QString &engineSql, EngineErrors &errors)
{
    const QString text = WellFormed(sql);
    if (const SqlFault fault = m_tokens.Read(text); fault != SqlFault::None) {
        errors = OdbcErrors::One(1, SqlFaultText(fault));
        return false;
    }
    const bool isPostgreSql = m_kind == DatabaseKind::PostgreSql;
    engineSql = SqlFor(isPostgreSql ? SqlDialect::PostgreSql : SqlDialect::SqlServer, m_tokens,
                       KeyOrder(m_tokens, m_keys));
    return true;
}
