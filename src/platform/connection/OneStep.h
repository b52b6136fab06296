#pragma once

#include "platform/connection/EngineError.h"

#include <QString>

class Connection;

/// A test and the write that relies on it, as one step that nobody can come between: others who want a step
/// with the same key wait until it ends. Either all of it is kept or nothing. It is never held during a
/// question to the user. Inside a WriteGroup the step is part of the group's transaction and is kept with it;
/// inside another step it is part of that step.
class OneStep final
{
public:
    /// `key` names what is tested: a table, or one course. On a file, a step keeps out all other writers; on
    /// a server, only those with the same key.
    OneStep(Connection &connection, const QString &key);
    /// Undoes what was not kept.
    ~OneStep();
    OneStep(const OneStep &) = delete;
    OneStep &operator=(const OneStep &) = delete;

    /// False if the step could not begin; the connection's Errors() then say why.
    bool HasBegun() const { return m_hasBegun; }
    /// True for a step inside another one.
    bool IsInner() const { return m_isInner; }
    /// Commits what was done. False if it was undone instead; the connection's Errors() then say why.
    bool Keep();

    static bool IsRunning(const Connection &connection);
    /// Undoes the running step, so that nobody waits while a user thinks; Keep() then fails.
    static void TakeBackRunning();
    /// With guarding off, steps have no effect; this shows what they guard against.
    static void SetGuarding(bool isOn);

private:
    friend class Connection;
    static bool RefusesWrite(const Connection &connection, EngineErrors &errors);
    static void Leave(const Connection &connection);
    bool Begin(const QString &key);
    bool BeginInGroup(const QString &key);
    bool Lock(const QString &key);
    void TakeBack();

    Connection &m_connection;
    bool m_isInner = false;
    bool m_isInGroup = false;
    bool m_hasBegun = false;
    bool m_isOpen = false; ///< holds a transaction of its own
};
