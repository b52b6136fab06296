#include "contacts/record/ContactRecordODBC.h"
#include "contacts/record/ContactSave.h"
#include "core/session/Progress.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "platform/desktop/Dialogs.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QThread>

#include <memory>
#include <vector>

// Two clerks save the same people, each with the whole record as it was read before: the changes of one must
// survive the other's save, and a field that both changed must be asked about once.

namespace
{
constexpr unsigned long pauseBeforeWrite = 200; ///< microseconds

struct Clerk {
    QString ContactRecord::*field; ///< the clerk's own
    QString ContactRecord::*other;
};
const Clerk clerks[] = {{&ContactRecord::telDay, &ContactRecord::fax},
                        {&ContactRecord::fax, &ContactRecord::telDay}};

/// A person's record as on a screen.
class Screen final
{
public:
    explicit Screen(int contactRef)
        : m_contactRef(contactRef)
    {
        const bool isThere =
            Reported("Screen", false, [&] { return ReadStoredContact(ContactRef(contactRef), m_shown); });
        Torture::Require(isThere, u"the person could not be read"_qs);
        m_seen = Contact_Values(m_shown.record, m_shown.Lists());
    }
    ContactRecord &Record() { return m_shown.record; }
    /// Forgets what it has seen, so that nothing counts as changed elsewhere.
    void Forget() { m_seen.clear(); }
    bool Save()
    {
        Progress progress;
        ListModel nobody;
        SeenMembers unknown;
        return Contact_Save(ContactRef(m_contactRef), m_shown.record, m_shown.Lists(), {{}, nobody, unknown},
                            m_seen, progress)
            .isWhole;
    }

private:
    int m_contactRef;
    StoredContact m_shown;
    FieldValues m_seen;
};

bool BeginPaused(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return false;
    gConnection.ObserveStatements([](const QString &sql) {
        if (sql.startsWith(u"UPDATE"))
            QThread::usleep(pauseBeforeWrite);
    });
    return true;
}

/// Waits until the other clerk has read as much, which each signals by adding a town.
void WaitForOther(const QString &clerk)
{
    TestDatabase::Run({u"INSERT INTO City (City, ReferenceID) VALUES ('clerk " % clerk % u"', '')"});
    while (TestDatabase::Rows(u"SELECT City FROM City WHERE City LIKE 'clerk %'"_qs).size() < 2)
        QThread::msleep(1);
}

/// Arguments: PERSON, CLERK, number of saves, and whether it checks what is stored. Counts up in its own
/// field, and prints how often the other's, or its own, was seen to go back.
int CountUp(const QStringList &arguments)
{
    if (!BeginPaused(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    const Clerk &clerk = clerks[own.at(1).toInt()];
    int lost = 0;
    int seen = 0;
    WaitForOther(own.at(1));
    for (int save = 1; save <= own.at(2).toInt(); ++save) {
        Screen screen(own.at(0).toInt());
        const int others = (screen.Record().*clerk.other).toInt();
        lost += others < seen || (screen.Record().*clerk.field).toInt() != save - 1;
        seen = qMax(seen, others);
        screen.Record().*clerk.field = QString::number(save);
        QThread::usleep(pauseBeforeWrite);
        if (own.at(3) == u"unguarded")
            screen.Forget();
        if (!screen.Save())
            return 2;
    }
    Workstation::Say(QString::number(lost));
    return 0;
}

/// Arguments: first person, CLERK, number of people. Gives each another fax number, and prints how often it
/// was asked.
int Dispute(const QStringList &arguments)
{
    if (!BeginPaused(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    int asked = 0;
    Dialogs::Installed().settleChanges = [&asked](const QString &, QList<Dialogs::FieldChange> &changes) {
        ++asked;
        return changes.size() == 1 && changes.first().isChangedHere && changes.first().isChangedElsewhere;
    };
    const int first = own.at(0).toInt();
    std::vector<std::unique_ptr<Screen>> screens;
    for (int i = 0; i < own.at(2).toInt(); ++i)
        screens.push_back(std::make_unique<Screen>(first + i));
    WaitForOther(own.at(1));
    for (const auto &screen : screens) {
        screen->Record().fax = u"clerk " % own.at(1);
        if (!screen->Save())
            return 2;
    }
    Workstation::Say(QString::number(asked));
    return 0;
}

int AddPerson(int number)
{
    ContactRecord person;
    person.forename = u"Anna"_qs;
    person.surname = QString::number(number);
    const int added = Contact_Add(person);
    Torture::Require(added > 0, u"the people could not be added"_qs);
    return added;
}

/// The sum of what the two clerks printed last.
int Run(const TestDatabase &database, const QString &role, const QStringList &before,
        const QStringList &after)
{
    std::vector<std::unique_ptr<Workstation>> both;
    for (const QString &clerk : {u"0"_qs, u"1"_qs})
        both.push_back(std::make_unique<Workstation>(database, role, before + QStringList{clerk} + after));
    int sum = 0;
    for (const auto &workstation : both) {
        Torture::Require(workstation->Finish(), u"a clerk failed"_qs);
        sum += workstation->Lines().last().toInt();
    }
    return sum;
}

int RaceFields(int saves, const QString &guard)
{
    const TestDatabase database;
    const int anna = AddPerson(0);
    int lost =
        Run(database, u"meanwhile-fields"_qs, {QString::number(anna)}, {QString::number(saves), guard});
    for (const QString &field : {u"Cust_TelDay"_qs, u"Cust_Fax"_qs})
        lost += TestDatabase::Value(u"SELECT " % field % u" FROM Contacts WHERE ContactRef = " %
                                    QString::number(anna))
                    .toInt() != saves;
    return lost;
}

/// How far the number of questions is from one per person.
int RaceSameField(int people)
{
    const TestDatabase database;
    const int first = AddPerson(0);
    for (int i = 1; i < people; ++i)
        AddPerson(i);
    const int asked =
        Run(database, u"meanwhile-same"_qs, {QString::number(first)}, {QString::number(people)});
    return qAbs(asked - people);
}

QList<Torture::Result> RaceMeanwhile(const Torture::Plan &plan)
{
    const int saves = plan.Trials(200, 500);
    const double lost = RaceFields(saves, u"guarded"_qs);
    const double control = RaceFields(saves, u"unguarded"_qs);
    const double unasked = RaceSameField(saves);
    return {{u"2 clerks save different fields of one person"_qs, 2 * saves, lost, 0, u"lost"_qs},
            {u"the same without looking at what is stored"_qs, 2 * saves, control, 0, u"lost"_qs, true},
            {u"2 clerks save the same field: one question each"_qs, saves, unasked, 0, u"off"_qs}};
}

const Torture::RoleRegistration fieldsRole("meanwhile-fields", CountUp);
const Torture::RoleRegistration sameRole("meanwhile-same", Dispute);
const Torture::KindRegistration kind("meanwhile", Torture::Engines::Both, RaceMeanwhile);
} // namespace
