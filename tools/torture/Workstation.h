#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

class TestDatabase;

/// Another workstation on a database: a separate process that plays a role.
class Workstation final
{
public:
    /// Starts it, connected to the database; `arguments` follow the two that every role has.
    Workstation(const TestDatabase &database, const QString &role, const QStringList &arguments);
    /// Kills it if it still runs.
    ~Workstation();
    Workstation(const Workstation &) = delete;
    Workstation &operator=(const Workstation &) = delete;

    /// Waits until it has printed its first line; false if it ended without one.
    bool WaitForFirstLine();
    void Kill();
    bool IsRunning();
    /// Waits until it ends of its own accord; false if it failed.
    bool Finish();
    /// The lines that it has printed so far, each of them confirmed work.
    QStringList Lines();

    /// In the workstation's own process: connects according to `arguments` and makes sure that no box waits
    /// for an answer. False if that fails.
    static bool Begin(const QStringList &arguments);
    /// The role's own arguments.
    static QStringList OwnArguments(const QStringList &arguments) { return arguments.mid(2); }
    /// Prints a line at once, so that a kill cannot take it back.
    static void Say(const QString &line);

private:
    QProcess m_process;
    QByteArray m_said;
};
