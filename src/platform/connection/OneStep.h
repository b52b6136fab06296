#pragma once

#include "platform/connection/EngineError.h"

#include <QString>

class Connection;

/// A test and the write that relies on it, as one step that nobody else comes between: others who want a step
/// of the same key wait for its end. All of it is kept, or nothing. Never held across a question to the user.
/// Inside a WriteGroup the step is a part of the group's transaction and is kept with it; inside another step
/// it is a part of that one.
class OneStep final
{
public:
    /// `key` names what is tested: a table, or one course. On a file a step keeps out all other writers, on a
    /// server those with the same key.
    OneStep(Connection &connection, const QString &key);
    /// Takes back what was not kept.
    ~OneStep();
    OneStep(const OneStep &) = delete;
    OneStep &operator=(const OneStep &) = delete;

    /// False where the step could not begin, which the connection's Errors() then tell.
    bool HasBegun() const { return m_hasBegun; }
    /// True for a step inside another one.
    bool IsInner() const { return m_isInner; }
    /// Makes what was done last. False where it was undone instead, which the connection's Errors() then
    /// tell.
    bool Keep();

    static bool IsRunning(const Connection &connection);
    /// Takes the running step back, so that nobody waits while a user thinks; Keep() then fails.
    static void TakeBackRunning();
    /// Without the guard steps have no effect, which shows what it guards against.
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
