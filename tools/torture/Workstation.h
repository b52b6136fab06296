#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

class TestDatabase;

/// Another workstation on a database: a process of its own that plays a role.
class Workstation final
{
public:
    /// Starts it connected to the database; `arguments` follow those two of every role.
    Workstation(const TestDatabase &database, const QString &role, const QStringList &arguments);
    /// Kills it if it still runs.
    ~Workstation();
    Workstation(const Workstation &) = delete;
    Workstation &operator=(const Workstation &) = delete;

    /// Waits until it has said its first line; false if it ended without one.
    bool WaitForFirstLine();
    void Kill();
    bool IsRunning();
    /// Waits until it ends of its own accord; false where it failed.
    bool Finish();
    /// The lines that it said so far, each of them confirmed work.
    QStringList Lines();

    /// In the workstation's own process: connects as `arguments` say and lets no box wait for an answer.
    /// False where that fails.
    static bool Begin(const QStringList &arguments);
    /// The arguments of its own that a role was started with.
    static QStringList OwnArguments(const QStringList &arguments) { return arguments.mid(2); }
    /// Says a line at once, so that a kill cannot take it back.
    static void Say(const QString &line);

private:
    QProcess m_process;
    QByteArray m_said;
};
