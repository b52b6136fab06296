#include "contacts/lists/ContactListODBC.h"
#include "contacts/record/ContactRecordODBC.h"
#include "core/session/Session.h"
#include "database/values/GlobalCode.h"
#include "platform/connection/Connection.h"
#include "platform/connection/OneStep.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QThread>

#include <memory>
#include <vector>

// Several workstations add the same people and towns at once; each must then be there once.

namespace
{
constexpr int workstations = 4;
constexpr unsigned long pauseBeforeWrite = 200; ///< microseconds

QString Name(int trial)
{
    return u"Name " % QString::number(trial);
}

/// Arguments: FIRST-LAST of the names, and whether the guard is on.
int AddAll(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    OneStep::SetGuarding(own.at(1) == u"guarded");
    gConnection.ObserveStatements([](const QString &sql) {
        if (sql.startsWith(u"INSERT"))
            QThread::usleep(pauseBeforeWrite);
    });
    for (int trial = 0; trial < own.at(0).toInt(); ++trial) {
        ContactRecord person;
        person.forename = Name(trial);
        person.surname = QStringLiteral("Twin");
        const int added = ADO_Contact_AddContact(person);
        const int town = ADO_Contact_AddItem(Name(trial), QStringLiteral("City"), QStringLiteral("City"),
                                             QStringLiteral("City_ID"), QString(), QString());
        if (added < 0 || town < 0)
            return 2;
    }
    return 0;
}

int Doubles(const QString &table, const QString &column)
{
    return static_cast<int>(TestDatabase::Rows(u"SELECT " % column % u", COUNT(*) AS N FROM " % table %
                                               u" WHERE " % column % u" LIKE 'Name %' GROUP BY " % column %
                                               u" HAVING COUNT(*) > 1")
                                .size());
}

int Race(int trials, bool isGuarded)
{
    const TestDatabase database;
    std::vector<std::unique_ptr<Workstation>> all;
    for (int i = 0; i < workstations; ++i)
        all.push_back(std::make_unique<Workstation>(
            database, u"adding"_qs,
            QStringList{QString::number(trials), isGuarded ? u"guarded"_qs : u"unguarded"_qs}));
    for (const auto &workstation : all)
        Torture::Require(workstation->Finish(), u"a workstation of the race failed"_qs);
    return Doubles(u"Contacts"_qs, u"Cust_Forename"_qs) + Doubles(u"City"_qs, u"City"_qs);
}

QList<Torture::Result> RaceAdding(const Torture::Plan &plan)
{
    const int trials = plan.Trials(200, 1000);
    const double doubled = Race(trials, true);
    const double control = Race(trials, false);
    return {{u"4 workstations add the same people and towns"_qs, 2 * trials, doubled, 0, u"twice"_qs},
            {u"the same without the guard"_qs, 2 * trials, control, 0, u"twice"_qs, true}};
}

const Torture::RoleRegistration role("adding", AddAll);
const Torture::KindRegistration kind("adding", Torture::Engines::Both, RaceAdding);
} // namespace
