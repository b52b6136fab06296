#include "torture/SaveKills.h"

#include "core/session/Session.h"
#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>

// A workstation is killed in the middle of a save; it must leave either the state before or the state after.

namespace
{
using SaveKills::Subject;

const Subject &SubjectAt(int index)
{
    return SaveKills::Subjects().at(static_cast<size_t>(index));
}

/// Arguments: SUBJECT KEY, and whether the save is one transaction or, to show what that guards against, each
/// statement its own. Prints a line at its first write, and one at its end with the microseconds since then.
int SaveOnce(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    const Subject &subject = SubjectAt(own.at(0).toInt());
    const bool isWhole = own.at(2) == u"whole";
    OneStep::SetGuarding(isWhole);
    QElapsedTimer since;
    gConnection.ObserveStatements([&](const QString &sql) {
        if (!isWhole)
            WriteGroup::CommitRunning();
        if (!since.isValid() && !sql.startsWith(u"SELECT")) {
            since.start();
            Workstation::Say(u"writes"_qs);
        }
        if (since.isValid())
            QThread::usleep(subject.pause);
    });
    if (!subject.save(own.at(1).toInt()))
        return 2;
    Workstation::Say(QString::number(since.nsecsElapsed() / 1000));
    return 0;
}

/// The kills of one subject.
class Kills final
{
public:
    /// `key` is that of the subject, 0 if it does not exist yet.
    Kills(const TestDatabase &database, int index, int &key, bool isWhole)
        : m_database(database)
        , m_index(index)
        , m_subject(SubjectAt(index))
        , m_isWhole(isWhole)
        , m_key(key)
    {
        m_key = m_subject.prepare(m_key);
        m_before = m_subject.state(m_key);
        Workstation workstation(m_database, u"saves"_qs, Arguments());
        Torture::Require(workstation.Finish(), u"no end of " % m_subject.name);
        m_length = workstation.Lines().value(1).toInt();
        m_after = m_subject.state(m_key);
        Torture::Require(m_before != m_after && m_length > 0, u"nothing came of " % m_subject.name);
    }
    /// Kills until `trials` kills have hit a save. Returns how many left something half done.
    int Run(int trials)
    {
        constexpr int mostMissed = 5;
        int halfDone = 0;
        int killed = 0;
        for (int i = 0; killed < trials; ++i) {
            Torture::Require(i < mostMissed * trials, u"the kills miss " % m_subject.name);
            m_key = m_subject.prepare(m_key);
            if (!KillOne())
                continue;
            ++killed;
            halfDone += IsHalfDone() ? 1 : 0;
        }
        return halfDone;
    }

private:
    QStringList Arguments() const
    {
        return {QString::number(m_index), QString::number(m_key), m_isWhole ? u"whole"_qs : u"loose"_qs};
    }
    /// False where it came too late.
    bool KillOne()
    {
        Workstation workstation(m_database, u"saves"_qs, Arguments());
        Torture::Require(workstation.WaitForFirstLine(), u"a workstation did not begin to save"_qs);
        QThread::usleep(static_cast<unsigned long>(m_random.bounded(m_length)));
        workstation.Kill();
        return workstation.Lines().size() == 1;
    }
    /// A server may still be executing the last statement of the killed workstation.
    bool IsHalfDone() const
    {
        constexpr unsigned long lastStatement = 200; ///< milliseconds
        if (IsOneOfBoth())
            return false;
        QThread::msleep(lastStatement);
        return !IsOneOfBoth();
    }
    bool IsOneOfBoth() const
    {
        const QString state = m_subject.state(m_key);
        return state == m_before || state == m_after;
    }

    const TestDatabase &m_database;
    int m_index;
    const Subject &m_subject;
    bool m_isWhole;
    int &m_key;
    QString m_before;
    QString m_after;
    int m_length = 0; ///< microseconds
    QRandomGenerator m_random{1};
};

QList<Torture::Result> KillSaves(const Torture::Plan &plan)
{
    const TestDatabase database;
    SaveKills::MakeChoices();
    QList<Torture::Result> results;
    for (int i = 0; i < static_cast<int>(SaveKills::Subjects().size()); ++i) {
        const QString &name = SubjectAt(i).name;
        int key = 0;
        const int trials = plan.Trials(20, 300);
        const double halfDone = Kills(database, i, key, true).Run(trials);
        results.append({u"killed while " % name, trials, halfDone, 0, u"half"_qs});
        const int controls = plan.Trials(6, 60);
        const double control = Kills(database, i, key, false).Run(controls);
        results.append({u"the same, each statement for itself"_qs, controls, control, 0, u"half"_qs, true});
    }
    return results;
}

const Torture::RoleRegistration role("saves", SaveOnce);
const Torture::KindRegistration kind("saves", Torture::Engines::Both, KillSaves);
} // namespace
