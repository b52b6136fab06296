#pragma once

#include "torture/MonkeyMind.h"

#include <QFile>
#include <QObject>
#include <QSet>
#include <QStringList>

class MonkeyHome;

/// A run of the monkey in this process, session after session: a number of steps from a seed, or a recorded
/// session. In both cases a session begins after the logon. A fault ends the process.
class MonkeyRun final : public QObject
{
public:
    /// `keys` is the file to which each deed of the current session is written before it is done.
    MonkeyRun(MonkeyHome &home, unsigned seed, int steps, const QString &keys);
    /// Plays the lines of a recorded session.
    MonkeyRun(MonkeyHome &home, const QStringList &lines);

    void Run();

private:
    void PlaySession();
    static void LogOn();
    void Plan(int delay);
    void Step();
    void CloseDown();
    void Look();
    MonkeyDeed NextDeed();
    MonkeyDeed Noted(const MonkeyDeed &deed);
    bool IsOver() const { return m_done >= m_steps; }

    MonkeyHome &m_home;
    MonkeyMind m_mind;
    QStringList m_lines;
    QFile m_keys;
    int m_steps;
    int m_done = 0;
    int m_nextLook = 0;    ///< the step after which the database is checked
    int m_depth = 0;       ///< of deeds that have not returned yet
    int m_closing = 0;     ///< failed attempts to end the session
    int m_sessionEnds = 0; ///< the step at which the session is ended
    int m_session = 0;
    QSet<QString> m_seen;    ///< windows that it has met
    qsizetype m_widgets = 0; ///< left by a session, counted when the second has ended
};
