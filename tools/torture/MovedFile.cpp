#include "core/session/Session.h"
#include "platform/connection/Connection.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QFile>
#include <QRandomGenerator>
#include <QThread>

#include <algorithm>

// A database file is moved away, with or without another in its place, while a workstation saves. Whatever it
// was told is saved must be in its file once that is back.

namespace
{
constexpr unsigned int longestPause = 300'000; ///< microseconds

/// Saves until a save is refused, and reports each that is done.
int SaveUntilRefused(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    for (int i = 1;
         gConnection.Execute(u"INSERT INTO City (City) VALUES ('City " % QString::number(i) % u"')"); ++i)
        Workstation::Say(QString::number(i));
    return 0;
}

/// How many confirmed saves are missing.
int LostWhenMoved(bool isReplaced)
{
    const TestDatabase database;
    gConnection.Close();
    const QString away = gDBQFilename % u".away";
    Workstation other(database, u"saver"_qs, {});
    Torture::Require(other.WaitForFirstLine(), u"nothing is saved"_qs);
    QThread::usleep(QRandomGenerator::global()->bounded(longestPause));
    Torture::Require(QFile::rename(gDBQFilename, away), u"the file cannot be moved"_qs);
    if (isReplaced)
        TestDatabase::MakeFile(gDBQFilename);
    Torture::Require(other.Finish(), u"the saves went on"_qs);
    const QStringList confirmed = other.Lines();
    QFile::remove(gDBQFilename);
    Torture::Require(QFile::rename(away, gDBQFilename) && database.Reconnect(),
                     u"the file does not come back"_qs);
    const int found = TestDatabase::Value(u"SELECT COUNT(*) FROM City WHERE City LIKE 'City %'"_qs).toInt();
    return std::max(0, confirmed.last().toInt() - found);
}

QList<Torture::Result> MoveAway(const Torture::Plan &plan)
{
    const int trials = plan.Trials(5, 50);
    QList<Torture::Result> results;
    for (const bool isReplaced : {false, true}) {
        int lost = 0;
        for (int trial = 0; trial < trials; ++trial)
            lost += LostWhenMoved(isReplaced);
        results.append(
            {isReplaced ? u"replaced under a session that saves"_qs : u"moved under a session that saves"_qs,
             trials, static_cast<double>(lost), 0, u"lost"_qs});
    }
    return results;
}

const Torture::RoleRegistration role("saver", SaveUntilRefused);
const Torture::KindRegistration kind("moved", Torture::Engines::File, MoveAway);
} // namespace
