#pragma once

#include "platform/connection/ConnectionText.h"
#include "platform/connection/EngineError.h"
#include "platform/connection/Recordset.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class Engine;

/// Receives some rows of a query; `firstRow` is the number of the first of them within the whole result.
/// Returns false to stop the query.
using TakeRows = std::function<bool(const Recordset &rows, int firstRow)>;

enum class DatabaseKind { None, File, SqlServer, PostgreSql };

/// The system's view of a database of any kind. The SQL text is the system's own, written for Access and
/// SQL Server; what an engine does not accept is translated below this class.
class Connection final
{
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the database that the connection text names; the text picks the engine. False on a failure,
    /// which Errors() then describes. An open connection is closed first. For a data source of a server, what
    /// `logon` names replaces the user or password of the text, and ConnectionText() then contains it.
    bool Open(const QString &connectionText, const ServerLogon &logon = {});
    void Close();
    bool IsOpen() const;

    /// The text of the open connection with what the engine added to it: for a data source of a file, its
    /// `DBQ=`.
    QString ConnectionText() const;
    DatabaseKind Kind() const;

    /// Runs a statement that returns no rows. False on a failure.
    bool Execute(const QString &sql);
    /// Runs a query and reads every row. Nullopt on a failure.
    std::optional<Recordset> OpenRecordset(const QString &sql);
    /// Runs a query of very many rows and hands them over as they come, so that the first can be shown at
    /// once. Other statements may run in between. Where a result must be read whole first, as on SQL Server,
    /// `take` gets empty pieces in the meantime, during which no statement may run. False on a failure.
    bool ReadInPieces(const QString &sql, const TakeRows &take);

    /// What went wrong in the last call that failed. A call that succeeds leaves it unchanged.
    const EngineErrors &Errors() const;

    /// Called with the text of each statement before it runs, as the caller wrote it.
    void ObserveStatements(std::function<void(const QString &)> observer);

private:
    friend class OneStep;
    friend class ReadSnapshot;
    friend class WriteGroup;
    static EngineErrors NotOpen();
    bool Fail(const EngineErrors &errors);
    bool Ready(const QString &sql);

    std::unique_ptr<Engine> m_engine;
    QString m_text;
    EngineErrors m_errors;
    std::function<void(const QString &)> m_observer;
};

/// Groups the writes of a long loop into transactions, for speed: one at a time, committed at a Tick once a
/// quarter of a second has passed, before any question to the user, and at the end, even after a failure, so
/// that what was done stays done. Tick is called between whole rows, so that a crash leaves no half-written
/// row; after a crash, the work of a group that never ticks is there completely or not at all. The first
/// write after a commit begins the next transaction. Groups do not nest: one inside another or inside a
/// OneStep has no effect. A statement that fails undoes nothing that the group did before it, except when the
/// disk is full or the server is lost: the group then refuses every further write, so that no loop goes on,
/// or is retried, after rows it had written are gone.
class WriteGroup final
{
public:
    explicit WriteGroup(Connection &connection);
    /// Finishes; a loop that reports its failures calls Finish itself.
    ~WriteGroup();
    WriteGroup(const WriteGroup &) = delete;
    WriteGroup &operator=(const WriteGroup &) = delete;

    /// Marks the end of a whole row of work. False if a commit was due and failed, which the connection's
    /// Errors() then describe, or if what was done since the last commit has been undone.
    bool Tick();
    /// Commits what the group holds. False on a failure, as with Tick.
    bool Finish();
    /// Undoes what the group did since its last commit, for work that is stopped and must not stay half done;
    /// for a group that never ticks that is everything. False on a failure, as with Tick.
    bool Undo();
    /// Commits what the running group holds. Called before every question to the user.
    static bool CommitRunning();
    static bool IsRunning(const Connection &connection);

private:
    friend class Connection;
    friend class OneStep;
    static bool BeforeWrite(Connection &connection, EngineErrors &errors);
    static void Leave(Connection &connection);
    bool Commit();
    Connection *m_connection = nullptr;
    bool m_open = false;
    qint64 m_begun = 0;      ///< milliseconds of the steady clock
    EngineErrors m_undone{}; ///< why the engine undid uncommitted work; empty if it did not
};

/// Lets a long run of reads see the database as it was at the first one, and saves each of them taking a lock
/// of its own. Others may write in the meantime; on a server, and on an engine that would block those
/// writers, it has no effect. It ends early before this connection writes and before any question to the
/// user. Inside another ReadSnapshot, or inside a WriteGroup that has written, it has no effect.
class ReadSnapshot final
{
public:
    explicit ReadSnapshot(Connection &connection);
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot &) = delete;
    ReadSnapshot &operator=(const ReadSnapshot &) = delete;

    /// Ends the running snapshot; its object has no effect after that.
    static void EndRunning();

private:
    friend class Connection;
    friend class OneStep;
    static void Leave(const Connection &connection);
    Connection *m_connection = nullptr;
};
