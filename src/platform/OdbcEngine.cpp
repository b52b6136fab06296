#include "platform/OdbcEngine.h"

#include "platform/ColumnTypes.h"
#include "platform/OdbcErrors.h"
#include "platform/OdbcText.h"
#include "platform/SqlDialect.h"

#include <QCoreApplication>
#include <QScopeGuard>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace
{
ColumnType TypeOf(const QSqlField &field)
{
    switch (field.metaType().id()) {
    case QMetaType::Bool:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::UChar:
        return ColumnType::SmallInt;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return ColumnType::Integer;
    case QMetaType::Double:
        return ColumnType::Double;
    default:
        return ColumnType::VarWChar;
    }
}

std::shared_ptr<const Columns> ColumnsOf(const QSqlRecord &record, DatabaseKind kind)
{
    auto columns = std::make_shared<Columns>();
    columns->reserve(static_cast<size_t>(record.count()));
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        RecordsetColumn column;
        column.name = field.name();
        column.type = TypeOf(field);
        if (column.type == ColumnType::VarWChar) {
            // PostgreSQL's driver calls every text one of 255, though its texts have no limit.
            const bool isLimited = kind == DatabaseKind::SqlServer && field.length() > 0;
            column.definedSize = isLimited ? field.length() : ColumnTypes::unlimitedSize;
        }
        columns->push_back(column);
    }
    return columns;
}

void AddCell(Recordset::Builder &rows, ColumnType type, const QVariant &value)
{
    if (value.isNull())
        rows.AddNull();
    else if (type == ColumnType::Double)
        rows.AddDouble(value.toDouble());
    else if (type == ColumnType::VarWChar)
        rows.AddText(value.toString());
    else
        rows.AddLong(value.toLongLong());
}
} // namespace

OdbcEngine::OdbcEngine(const QString &connectionText)
    : m_text(connectionText)
{
    static int count = 0;
    m_name = u"Veltrane" % QString::number(++count);
}

std::unique_ptr<Engine> OdbcEngine::Open(const ConnectionParts &parts, const QString &connectionText,
                                         EngineErrors &errors)
{
    const QString driver = QStringLiteral("QODBC");
    if (!QSqlDatabase::isDriverAvailable(driver)) {
        errors = OdbcErrors::One(OdbcErrors::noDriver,
                                 QStringLiteral("Servers cannot be reached from here yet. Install the Debian "
                                                "package libqt6sql6-odbc."));
        return nullptr;
    }
    const std::optional<QString> driverText = OdbcDriverText(parts, errors);
    if (!driverText)
        return nullptr;
    std::unique_ptr<OdbcEngine> engine(new OdbcEngine(connectionText));
    engine->m_database = QSqlDatabase::addDatabase(driver, engine->m_name);
    engine->m_driverText = *driverText;
    if (!engine->Connect(errors))
        return nullptr;
    return engine;
}

OdbcEngine::~OdbcEngine()
{
    m_database.close();
    m_database = QSqlDatabase();
    // The session's connection can outlive the application, and with it Qt's list of connections.
    if (QCoreApplication::instance())
        QSqlDatabase::removeDatabase(m_name);
}

bool OdbcEngine::Connect(EngineErrors &errors)
{
    // Qt takes a text with DRIVER= as it stands and puts DSN= before all others.
    const bool isSource = m_driverText.startsWith(QStringLiteral("DSN="));
    m_database.setDatabaseName(isSource ? m_driverText.mid(4) : m_driverText);
    m_database.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=15"));
    if (!m_database.open()) {
        errors = OdbcErrors::ListOf(m_database.lastError());
        return false;
    }
    const QSqlDriver::DbmsType dbms = m_database.driver()->dbmsType();
    m_kind = dbms == QSqlDriver::PostgreSQL ? DatabaseKind::PostgreSql : DatabaseKind::SqlServer;
    m_database.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    // Nobody waits for another workstation for ever.
    return Run(m_kind == DatabaseKind::PostgreSql ? QStringLiteral("SET lock_timeout = 10000")
                                                  : QStringLiteral("SET LOCK_TIMEOUT 10000"),
               errors);
}

bool OdbcEngine::Execute(const QString &sql, EngineErrors &errors)
{
    QString engineSql;
    return Translate(sql, engineSql, errors) && Revive(errors) && Run(engineSql, errors);
}

bool OdbcEngine::OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors)
{
    QString engineSql;
    return Translate(sql, engineSql, errors) && Revive(errors) &&
           Read(
               engineSql, result, [] { return true; }, errors);
}

/// SQL Server has one open result on a connection, so that all rows are read before the first is handed over.
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

/// PostgreSQL keeps the result under a name: read in one, its driver takes all rows before it gives the
/// first.
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
        if (!Read(
                u"FETCH " % QString::number(wanted) % u" FROM " % name, rows, [] { return true; }, errors))
            return false;
        if (!take(rows, given) || rows.RowCount() < wanted)
            return true;
        given += rows.RowCount();
    }
}

bool OdbcEngine::Read(const QString &engineSql, Recordset &result, const std::function<bool()> &goesOn,
                      EngineErrors &errors)
{
    constexpr int askedEvery = 256;
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(engineSql))
        return Fail(query, errors);
    const auto columns = ColumnsOf(query.record(), m_kind);
    Recordset::Builder rows(columns);
    for (int row = 1; query.next(); ++row) {
        for (size_t i = 0; i < columns->size(); ++i)
            AddCell(rows, (*columns)[i].type, query.value(static_cast<int>(i)));
        if (row % askedEvery == 0 && !goesOn())
            return true;
    }
    if (query.lastError().isValid())
        return Fail(query, errors);
    result = rows.Finish();
    return true;
}

bool OdbcEngine::Begin(EngineErrors &errors)
{
    if (!Revive(errors))
        return false;
    m_locks.clear();
    m_isInTransaction = m_kind == DatabaseKind::SqlServer
                            ? Run(QStringLiteral("BEGIN TRANSACTION"), errors)
                            : m_database.transaction() || Fail(m_database.lastError(), errors);
    return m_isInTransaction;
}

/// SQL Server's driver answers the manager's own commit with "no data", which Qt takes for a failure; the
/// statement has the same answer, and there it counts as done.
bool OdbcEngine::Commit(EngineErrors &errors)
{
    if (!m_isInTransaction) {
        errors =
            OdbcErrors::One(OdbcErrors::unnumbered,
                            QStringLiteral("What was done last was undone: the server was lost, or ended "
                                           "the transaction itself."));
        return false;
    }
    m_isInTransaction = false;
    if (m_kind == DatabaseKind::SqlServer)
        return Run(QStringLiteral("COMMIT TRANSACTION"), errors);
    return m_database.commit() || Fail(m_database.lastError(), errors);
}

bool OdbcEngine::Rollback(EngineErrors &errors)
{
    if (!m_isInTransaction)
        return true;
    m_isInTransaction = false;
    if (m_kind == DatabaseKind::SqlServer)
        return Run(QStringLiteral("ROLLBACK TRANSACTION"), errors);
    return m_database.rollback() || Fail(m_database.lastError(), errors);
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

/// Both servers let go of such a lock when the transaction ends, whichever way it does.
bool OdbcEngine::TakeLock(const QString &key, bool waits, bool &isFree, EngineErrors &errors)
{
    constexpr int longestWait = 10'000; ///< milliseconds, as for a row
    isFree = m_locks.contains(key);
    if (isFree)
        return true;
    Recordset answer;
    const QString quoted = u'\'' % QString(key).replace(u'\'', QStringLiteral("''")) % u'\'';
    const auto ask = [&](const QString &sql) {
        return Read(
            sql, answer, [] { return true; }, errors);
    };
    if (m_kind == DatabaseKind::PostgreSql) {
        const QString hash = u"hashtextextended(" % quoted % u", 0)";
        const bool done =
            ask(waits ? QString(u"SELECT 1 AS got FROM (SELECT pg_advisory_xact_lock(" % hash % u")) AS l")
                      : QString(u"SELECT CASE WHEN pg_try_advisory_xact_lock(" % hash %
                                u") THEN 1 ELSE 0 END AS got"));
        if (!done)
            return false;
    } else if (!ask(u"SET NOCOUNT ON; DECLARE @got int; EXEC @got = sp_getapplock @Resource = N" % quoted %
                    u", @LockMode = 'Exclusive', @LockOwner = 'Transaction', @LockTimeout = " %
                    QString::number(waits ? longestWait : 0) %
                    u"; SELECT CASE WHEN @got >= 0 THEN 1 ELSE 0 END AS got")) {
        return false;
    }
    isFree = !answer.IsEmpty() && answer.First().Long(u"got") == 1;
    if (isFree)
        m_locks.insert(key);
    else if (waits)
        errors = OdbcErrors::One(OdbcErrors::lockTimeout,
                                 QStringLiteral("Another workstation kept what is needed for too long."));
    return isFree || !waits;
}

bool OdbcEngine::Run(const QString &engineSql, EngineErrors &errors)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    return query.exec(engineSql) || Fail(query, errors);
}

/// Connects anew after the server was restarted or the line broke. The failure itself has been told.
bool OdbcEngine::Revive(EngineErrors &errors)
{
    if (!m_isLost)
        return true;
    m_database.close();
    m_isLost = false;
    const bool connected = Connect(errors);
    m_isLost = !connected;
    return connected;
}

bool OdbcEngine::Fail(const QSqlError &error, EngineErrors &errors)
{
    errors = OdbcErrors::ListOf(error);
    // SQL Server takes a whole transaction back at some failures, at a deadlock for one.
    const bool isSqlServer = m_kind == DatabaseKind::SqlServer;
    QSqlQuery question(m_database);
    question.setForwardOnly(true);
    m_isLost =
        !question.exec(isSqlServer ? QStringLiteral("SELECT @@TRANCOUNT") : QStringLiteral("SELECT 1"));
    if (m_isLost) // the driver takes a commit behind this for a good one
        m_isInTransaction = false;
    else if (isSqlServer && question.next())
        m_isInTransaction = m_isInTransaction && question.value(0).toInt() > 0;
    return false;
}

/// Lets go of the statement first: the driver of SQL Server has room for one open result, and what is asked
/// after the failure would be refused as if the server were lost.
bool OdbcEngine::Fail(QSqlQuery &query, EngineErrors &errors)
{
    const QSqlError error = query.lastError();
    query.clear();
    return Fail(error, errors);
}

bool OdbcEngine::Translate(const QString &sql, QString &engineSql, EngineErrors &errors)
{
    const QString text = WellFormed(sql);
    if (const SqlFault fault = m_tokens.Read(text); fault != SqlFault::None) {
        errors = OdbcErrors::One(1, SqlFaultText(fault));
        return false;
    }
    engineSql = m_kind == DatabaseKind::PostgreSql ? SqlFor(SqlDialect::PostgreSql, m_tokens) : text;
    return true;
}
