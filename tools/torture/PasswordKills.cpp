#include "core/session/Session.h"
#include "database/connection/ConnectDatabase.h"
#include "database/connection/frmDBPass.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "platform/desktop/Directories.h"
#include "platform/engines/FileDatabase.h"
#include "support/FullDisk.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QThread>

#include <memory>

// The password of a database file is changed and the program killed in the middle of it. When the program
// starts, it must then be able to open the file with all its people.

namespace
{
constexpr int people = 20'000;

struct Direction {
    const char *what;
    const char *before;
    const char *after;
};
constexpr Direction directions[] = {{"from one password to another", "old", "new"},
                                    {"from none to one", "", "new"},
                                    {"from one to none", "old", ""}};

void Type(frmDBPass &form, const char *field, const QString &text)
{
    form.findChild<QLineEdit *>(QLatin1String(field))->setText(text);
}

/// Arguments: FILE, the old and the new password. Changes it as the form does.
int Change(const QStringList &arguments)
{
    Directories::SetProgram(arguments.at(1));
    Dialogs::Installed().msgBox = [](auto...) { return Dialogs::Answer::Ok; };
    const QStringList own = Workstation::OwnArguments(arguments);
    gDBQType = 1;
    gDBQUseODBC = false;
    gDBQFilename = own.at(0);
    gDBPassword = own.at(1);
    frmDBPass form;
    Type(form, "OldPass", own.at(1));
    Type(form, "NewPass1", own.at(2));
    Type(form, "NewPass2", own.at(2));
    Workstation::Say(u"changing"_qs);
    form.findChild<QPushButton *>(u"OKBtn"_qs)->click();
    return gConnection.IsOpen() ? 0 : 1;
}

/// Tries without a password first, then with those that the user would type.
bool StartsWhole(const QString &file, QStringList typed)
{
    gConnection.Close();
    gDBQFilename = file;
    gDBPassword.clear();
    Dialogs::Installed().msgBox = [](auto...) { return Dialogs::Answer::Ok; };
    Dialogs::Installed().databaseLogon = [&typed] {
        gDialogResult = typed.isEmpty() ? 0 : 1;
        gDBPassword = typed.isEmpty() ? QString() : typed.takeFirst();
    };
    const bool isWhole =
        ConnectDatabase(false) &&
        TestDatabase::Value(u"SELECT COUNT(*) FROM Contacts WHERE Cust_Surname = 'Kept'"_qs) ==
            QString::number(people) &&
        TestDatabase::Value(u"PRAGMA integrity_check"_qs) == u"ok";
    gConnection.Close();
    return isWhole;
}

/// A database with people as it is on the disk while somebody has it open: with or without work in the log.
class Original final
{
public:
    Original(const TestDatabase &database, const QString &password, bool hasLog)
        : m_file(database.Directory() % u"/original.mdb")
    {
        TestDatabase::MakeFile(m_file);
        auto alone = FileDatabase::OpenExclusive(m_file, {});
        Torture::Require(alone &&
                             alone->Run(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                                        "WHERE i < " %
                                        QString::number(hasLog ? people - 1 : people) %
                                        u") INSERT INTO Contacts (Cust_Forename, Cust_Surname) SELECT "
                                        "'Name ' || i, 'Kept' FROM n"),
                         u"the people cannot be added"_qs);
        Torture::Require(password.isEmpty() || alone->NewPassword(password), u"no password can be set"_qs);
        alone.reset();
        if (hasLog)
            Torture::Require(m_open.Open(u"DBQ=" % m_file %
                                         u";Driver={Microsoft Access Driver (*.mdb)};PWD=" % password) &&
                                 m_open.Execute(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname) VALUES "
                                                "('Last', 'Kept')"_qs),
                             u"the original cannot be opened"_qs);
    }
    ~Original()
    {
        m_open.Close();
        QFile::remove(m_file);
    }
    Original(const Original &) = delete;
    Original &operator=(const Original &) = delete;

    void CopyTo(const QString &file) const
    {
        for (const char *ending : {"", "-wal", "-shm", "-journal", ".password", ".password-journal"})
            QFile::remove(file + QLatin1String(ending));
        for (const char *ending : {"", "-wal"})
            QFile::copy(m_file + QLatin1String(ending), file + QLatin1String(ending));
    }

private:
    QString m_file;
    Connection m_open;
};

/// How many of `trials` files were lost.
int Lost(const TestDatabase &database, const Direction &direction, bool hasLog, int trials)
{
    const QString before = QString::fromLatin1(direction.before);
    const QString after = QString::fromLatin1(direction.after);
    const Original original(database, before, hasLog);
    const QString file = database.Directory() % u"/changed.mdb";
    const auto start = [&] {
        original.CopyTo(file);
        auto other =
            std::make_unique<Workstation>(database, u"password"_qs, QStringList{file, before, after});
        Torture::Require(other->WaitForFirstLine(), u"the change of the password does not begin"_qs);
        return other;
    };
    const auto whole = start();
    QElapsedTimer whenDone;
    whenDone.start();
    Torture::Require(whole->Finish(), u"the password cannot be changed"_qs);
    const auto longest = static_cast<quint32>(whenDone.nsecsElapsed() / 1000);

    int lost = 0;
    for (int trial = 0; trial < trials; ++trial) {
        const auto other = start();
        QThread::usleep(QRandomGenerator::global()->bounded(longest));
        other->Kill();
        if (!StartsWhole(file, {before, after}))
            ++lost;
    }
    return lost;
}

/// A disk that fills while the copy is written leaves the file with its old password, and nothing beside it.
double LostOnAFullDisk(const TestDatabase &database)
{
    const QString file = database.Directory() % u"/full.mdb";
    Original(database, u"old"_qs, false).CopyTo(file);
    bool changed = false;
    {
        const FullDisk disk(static_cast<rlim_t>(QFileInfo(file).size() / 2));
        const auto alone = FileDatabase::OpenExclusive(file, u"old"_qs);
        changed = alone && alone->NewPassword(u"new"_qs);
    }
    const bool isClean = !QFileInfo::exists(file % u".password");
    return !changed && isClean && StartsWhole(file, {u"old"_qs}) ? 0 : 1;
}

QList<Torture::Result> KillChanges(const Torture::Plan &plan)
{
    const TestDatabase database;
    const int trials = plan.Trials(6, 150);
    QList<Torture::Result> results;
    for (const Direction &direction : directions) {
        for (const bool hasLog : {false, true})
            results.append({u"killed " % QLatin1String(direction.what) % (hasLog ? u", log" : u", journal"),
                            trials, static_cast<double>(Lost(database, direction, hasLog, trials)), 0,
                            u"lost"_qs});
    }
    results.append({u"a disk that fills meanwhile"_qs, 1, LostOnAFullDisk(database), 0, u"lost"_qs});
    return results;
}

const Torture::RoleRegistration role("password", Change);
const Torture::KindRegistration kind("password", Torture::Engines::File, KillChanges);
} // namespace
