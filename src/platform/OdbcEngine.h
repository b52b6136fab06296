#pragma once

#include "platform/ConnectionText.h"
#include "platform/Engine.h"
#include "platform/SqlTokens.h"

#include <QSet>
#include <QSqlDatabase>

class QSqlError;
class QSqlQuery;

/// A database on a server, through the ODBC manager and the server's driver.
class OdbcEngine final : public Engine
{
public:
    /// A server by name and catalogue, or a registered data source of a server.
    static std::unique_ptr<Engine> Open(const ConnectionParts &parts, const QString &connectionText,
                                        EngineErrors &errors);
    ~OdbcEngine() override;

    bool Execute(const QString &sql, EngineErrors &errors) override;
    bool OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors) override;
    bool ReadInPieces(const QString &sql, const TakeRows &take, EngineErrors &errors) override;
    bool Begin(EngineErrors &errors) override;
    bool Commit(EngineErrors &errors) override;
    bool Rollback(EngineErrors &errors) override;
    bool IsInTransaction() const override { return m_isInTransaction; }
    bool Lock(const QString &key, EngineErrors &errors) override;
    bool TryLock(const QString &key, bool &isFree, EngineErrors &errors) override;
    DatabaseKind Kind() const override { return m_kind; }
    QString ConnectionText() const override { return m_text; }

private:
    explicit OdbcEngine(const QString &connectionText);
    bool Connect(EngineErrors &errors);
    bool Revive(EngineErrors &errors);
    bool Run(const QString &engineSql, EngineErrors &errors);
    bool TakeLock(const QString &key, bool waits, bool &isFree, EngineErrors &errors);
    /// `goesOn` is asked now and then while the rows come; false ends it without a result.
    bool Read(const QString &engineSql, Recordset &result, const std::function<bool()> &goesOn,
              EngineErrors &errors);
    bool FetchInPieces(const QString &engineSql, const TakeRows &take, EngineErrors &errors);
    bool Fail(const QSqlError &error, EngineErrors &errors);
    bool Fail(QSqlQuery &query, EngineErrors &errors);
    bool Translate(const QString &sql, QString &engineSql, EngineErrors &errors);

    QString m_text;
    QString m_driverText;
    QString m_name; ///< of the connection, among Qt's
    QSqlDatabase m_database;
    DatabaseKind m_kind = DatabaseKind::SqlServer;
    bool m_isLost = false; ///< the server no longer answers; the next statement connects anew
    bool m_isInTransaction = false;
    QSet<QString> m_locks; ///< the keys that the transaction holds
    int m_cursors = 0;     ///< opened so far
    SqlTokens m_tokens;
};
