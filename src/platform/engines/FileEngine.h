#pragma once

#include "platform/connection/Engine.h"
#include "platform/engines/FileWait.h"
#include "platform/engines/StatementCache.h"
#include "platform/sql/SqlShape.h"

#include <chrono>
#include <memory>

/// A database in one file, opened in this process.
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
    using Clock = std::chrono::steady_clock;

    FileEngine(sqlite3 *handle, const Request &request, const FileWait::Pace &pace)
        : m_handle(handle)
        , m_request(request)
        , m_pace(pace)
    {
    }
    static std::unique_ptr<FileEngine> TryOpen(const Request &request, EngineErrors &errors);
    void Configure();
    void ForgetPassword();
    PreparedStatement *Prepare(const QString &sql, std::unique_ptr<PreparedStatement> &once,
                               EngineErrors &errors);
    sqlite3_stmt *PrepareText(const QString &engineSql, bool isKept, EngineErrors &errors);
    void BindValues(sqlite3_stmt *statement) const;
    bool Fail(EngineErrors &errors) const;
    bool IsInPlace(EngineErrors &errors) const;
    void LeaveGap();
    bool Run(const char *sql, EngineErrors &errors) const;
    bool HasLog() const;

    sqlite3 *m_handle;
    Request m_request;
    FileWait::Pace m_pace;
    Clock::time_point m_lastWrite{};
    Clock::time_point m_runBegun{}; ///< of writes with no gap between them
    SqlTokens m_tokens;
    SqlShape m_shape;
    StatementCache m_cache;
};
