#pragma once

#include "platform/connection/ConnectionText.h"
#include "platform/connection/Engine.h"
#include "platform/engines/OdbcSession.h"
#include "platform/sql/SqlKeyOrder.h"
#include "platform/sql/SqlTokens.h"

#include <QSet>

/// A database on a server, through the ODBC manager and the server's driver.
class OdbcEngine final : public Engine
{
public:
    /// Opens a server by name and catalogue, or a registered data source of a server.
    static std::unique_ptr<Engine> Open(const ConnectionParts &parts, const QString &connectionText,
                                        EngineErrors &errors);

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
    OdbcEngine(const QString &connectionText, const QString &driverText);
    bool Connect(EngineErrors &errors);
    bool ApplySettings(EngineErrors &errors);
    void LearnKeys();
    bool Revive(EngineErrors &errors);
    bool Run(const QString &engineSql, EngineErrors &errors);
    bool TakeLock(const QString &key, bool waits, bool &isFree, EngineErrors &errors);
    bool RunStatement(const QString &engineSql, EngineErrors &errors);
    /// `goesOn` is asked now and then while the rows come; false ends it without a result.
    bool Read(const QString &engineSql, Recordset &result, const std::function<bool()> &goesOn,
              EngineErrors &errors);
    bool Read(const QString &engineSql, Recordset &result, EngineErrors &errors);
    bool ReadStatement(const QString &engineSql, Recordset &result, const std::function<bool()> &goesOn,
                       EngineErrors &errors);
    bool FetchInPieces(const QString &engineSql, const TakeRows &take, EngineErrors &errors);
    bool EndTransaction(bool keeps, EngineErrors &errors);
    bool Fail(EngineErrors &errors);
    bool Translate(const QString &sql, QString &engineSql, EngineErrors &errors);

    QString m_text;
    QString m_driverText;
    OdbcSession m_session;
    DatabaseKind m_kind = DatabaseKind::SqlServer;
    TableKeys m_keys;
    bool m_isLost = false; ///< the server no longer answers; the next statement connects again
    bool m_isInTransaction = false;
    QSet<QString> m_locks; ///< the keys that the transaction holds
    int m_cursors = 0;     ///< opened so far
    SqlTokens m_tokens;
};
