#pragma once

#include "platform/connection/ConnectionText.h"
#include "platform/connection/EngineError.h"
#include "platform/connection/Recordset.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

class Engine;

/// Takes some rows of a query; `firstRow` is the number of the first of them in the whole result. False wants
/// no more.
using TakeRows = std::function<bool(const Recordset &rows, int firstRow)>;

enum class DatabaseKind { None, File, SqlServer, PostgreSql };

/// The system's view of a database of any kind. The SQL text is the system's own, written for Access and
/// SQL Server; what an engine does not take is absorbed below this class.
class Connection final
{
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens the database that the connection text names; the text picks the engine. False on a failure,
    /// which Errors() then tells. An open connection is closed first. What `logon` names is used in place of
    /// the text's user or password by a data source of a server; ConnectionText() has it then.
    bool Open(const QString &connectionText, const ServerLogon &logon = {});
    void Close();
    bool IsOpen() const;

    /// The text of the open connection with what the engine added to it: a data source of a file has its
    /// `DBQ=` here.
    QString ConnectionText() const;
    DatabaseKind Kind() const;

    /// Runs a statement that returns no rows. False on a failure.
    bool Execute(const QString &sql);
    /// Runs a query and reads every row. Nothing on a failure.
    std::optional<Recordset> OpenRecordset(const QString &sql);
    /// Runs a query of very many rows and hands them over as they come, so that the first are there at once.
    /// Other statements may run in between. Where a result must be read whole first, as on SQL Server, `take`
    /// gets empty pieces meanwhile, and in those no statement may run. False on a failure.
    bool ReadInPieces(const QString &sql, const TakeRows &take);

    /// What went wrong at the last call that failed. A call that succeeds leaves it alone.
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

/// Groups the writes of a long loop into transactions, for speed: one at a time, committed at the latest
/// every quarter of a second at a Tick, before any question to the user, and at the end, a failure
/// included, so that what was done stays done. Tick comes between whole rows, so that a crash leaves no
/// half row; a group that never ticks is whole or not there at all after a crash. The first write after a
/// commit begins the next transaction. Groups do not nest: one inside another or inside a OneStep has no
/// effect. A statement that fails takes nothing with it that the group did before, but on a disk
/// that is full or with a server lost: the group then takes no further write, so that no loop goes on, or
/// is retried, over rows that are gone.
class WriteGroup final
{
public:
    explicit WriteGroup(Connection &connection);
    /// Finishes; a loop that tells of its failures calls Finish itself.
    ~WriteGroup();
    WriteGroup(const WriteGroup &) = delete;
    WriteGroup &operator=(const WriteGroup &) = delete;

    /// Marks the end of a whole row of work. False where a commit was due and failed, which the
    /// connection's Errors() then tell, or where what was done since the last commit is undone.
    bool Tick();
    /// Commits what the group holds. False on a failure, as with Tick.
    bool Finish();
    /// Takes back what the group did since its last commit, for work that is stopped and must not stay half
    /// done: of a group that never ticks that is all. False on a failure, as with Tick.
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
    qint64 m_begun = 0; ///< milliseconds of the steady clock
    EngineErrors
        m_undone{}; ///< why the engine undid what was not committed yet; empty while nothing was lost
};

/// Lets a long run of reads see the database as it stood at its first one, and spares each of them the lock
/// of its own. Others write meanwhile as they like; an engine that would keep them from it, and a server,
/// reads on as without it. It ends early before this connection writes and before any question to the user.
/// Inside another of its kind, or inside a WriteGroup that has written, it has no effect.
class ReadSnapshot final
{
public:
    explicit ReadSnapshot(Connection &connection);
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot &) = delete;
    ReadSnapshot &operator=(const ReadSnapshot &) = delete;

    /// Ends the one that is running, for as long as its object lives.
    static void EndRunning();

private:
    friend class Connection;
    friend class OneStep;
    static void Leave(const Connection &connection);
    Connection *m_connection = nullptr;
};
