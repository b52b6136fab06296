#pragma once

#include "platform/connection/Connection.h"

/// What a database engine offers to Connection. Each call returns false and fills `errors` on a failure.
class Engine
{
public:
    virtual ~Engine() = default;
    virtual bool Execute(const QString &sql, EngineErrors &errors) = 0;
    virtual bool OpenRecordset(const QString &sql, Recordset &result, EngineErrors &errors) = 0;
    virtual bool ReadInPieces(const QString &sql, const TakeRows &take, EngineErrors &errors) = 0;
    virtual bool Begin(EngineErrors &errors) = 0;
    virtual bool Commit(EngineErrors &errors) = 0;
    /// Undoes what was done since Begin; does nothing if the transaction has already ended.
    virtual bool Rollback(EngineErrors &errors) = 0;
    /// From here until Rollback, all reads see one state of the database. False, which is not a failure, if
    /// that would stop others from writing or the engine cannot do it.
    virtual bool BeginReading() { return false; }
    /// False once a transaction has ended, by a commit or by a failure that undid it.
    virtual bool IsInTransaction() const = 0;
    virtual DatabaseKind Kind() const = 0;
    /// Waits for the lock on what `key` names, which the transaction then holds to its end. A file has a
    /// single lock, which its transactions hold from the beginning.
    virtual bool Lock(const QString &key, EngineErrors &errors)
    {
        Q_UNUSED(key)
        Q_UNUSED(errors)
        return true;
    }
    /// The same without waiting: `isFree` tells whether the transaction now holds the lock.
    virtual bool TryLock(const QString &key, bool &isFree, EngineErrors &errors)
    {
        isFree = true;
        return Lock(key, errors);
    }
    /// The connection text as it reads once the connection is open.
    virtual QString ConnectionText() const = 0;
};

/// Opens the engine that a connection text names; null, with `errors` filled, on a failure.
std::unique_ptr<Engine> OpenEngine(const QString &connectionText, const ServerLogon &logon,
                                   EngineErrors &errors);
