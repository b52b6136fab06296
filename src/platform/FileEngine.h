#pragma once

#include "platform/Engine.h"
#include "platform/SqlShape.h"
#include "platform/StatementCache.h"

#include <memory>

/// A database in one file, in this process.
class FileEngine final : public Engine
{
public:
    struct Request {
        QString file;
        QString password;
        int lockWait = 10'000; ///< milliseconds that a statement waits for another workstation
        QString connectionText;
    };
    static std::unique_ptr<Engine> Open(const Request &request, EngineErrors &errors);
    ~FileEngine() override;

    bool Execute(const QString &sql, EngineErrors &errors) override;
    bool OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors) override;
    bool ReadInPieces(const QString &sql, const TakeRows &take, EngineErrors &errors) override;
    bool Begin(EngineErrors &errors) override;
    bool Commit(EngineErrors &errors) override;
    bool Rollback(EngineErrors &errors) override;
    bool BeginReading() override;
    bool IsInTransaction() const override;
    DatabaseKind Kind() const override { return DatabaseKind::File; }
    QString ConnectionText() const override { return m_request.connectionText; }

private:
    FileEngine(sqlite3 *handle, const Request &request)
        : m_handle(handle)
        , m_request(request)
    {
    }
    void Configure();
    void ForgetPassword();
    PreparedStatement *Prepare(const QString &sql, std::unique_ptr<PreparedStatement> &once,
                               EngineErrors &errors);
    sqlite3_stmt *PrepareText(const QString &engineSql, bool isKept, EngineErrors &errors);
    void BindValues(sqlite3_stmt *statement) const;
    bool Fail(EngineErrors &errors) const;
    bool Run(const char *sql, EngineErrors &errors) const;
    bool HasLog() const;

    sqlite3 *m_handle;
    Request m_request;
    SqlTokens m_tokens;
    SqlShape m_shape;
    StatementCache m_cache;
};
