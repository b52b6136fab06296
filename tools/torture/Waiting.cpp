#include "contacts/record/ContactRecordODBC.h"
#include "core/session/Progress.h"
#include "exchange/import/ImportState.h"
#include "platform/connection/Connection.h"
#include "platform/desktop/Dialogs.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <memory>
#include <vector>

// One workstation imports a long file while four clerks save: each save waits for its turn, and no longer.

namespace
{
constexpr int clerks = 4;
constexpr unsigned long pauseOfAClerk = 1'000; ///< milliseconds between two saves

/// Saves until it is killed, and prints the milliseconds of each.
int Save(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    Workstation::Say(u"0"_qs);
    ContactRecord person;
    person.surname = u"Clerk " % Workstation::OwnArguments(arguments).at(0);
    for (int i = 0;; ++i) {
        person.forename = u"Person " % QString::number(i);
        QElapsedTimer waited;
        waited.start();
        if (ADO_Contact_AddContact(person) <= 0)
            return 2;
        Workstation::Say(QString::number(waited.elapsed()));
        QThread::msleep(pauseOfAClerk);
    }
}

QString PeopleFile(const TestDatabase &database, int lines)
{
    const QString name = database.Directory() % u"/people.csv";
    QFile file(name);
    Torture::Require(file.open(QIODevice::WriteOnly), u"the file cannot be written"_qs);
    file.write("Forename,Surname,Address,Postcode,City,Organisation\n");
    for (int i = 0; i < lines; ++i) {
        const QByteArray number = QByteArray::number(i);
        file.write("Forename" + QByteArray::number(i % 211) + ",Surname" + number + "," + number +
                   " High Street,AB" + QByteArray::number(i % 90) + ",City" + QByteArray::number(i % 400) +
                   ",Organisation" + QByteArray::number(i % 900) + '\n');
    }
    return name;
}

/// Milliseconds of the whole import.
double Import(const QString &file, int lines)
{
    QString told;
    Dialogs::Installed().msgBox = [&told](const QString &text, auto...) {
        told = text;
        return Dialogs::Answer::Ok;
    };
    ImportState state(CsvMap::Installed());
    Torture::Require(state.ChooseDataSet() && state.ChooseFile(file) && state.CheckMapping(), told);
    QElapsedTimer took;
    took.start();
    Progress progress;
    Torture::Require(
        state.Run(progress) && told.contains(QString::number(lines) % u" Records where imported."), told);
    return static_cast<double>(took.elapsed());
}

struct Beside {
    double imported = 0; ///< milliseconds
    int saves = 0;
    double longest = 0; ///< milliseconds
    int stopped = 0;    ///< clerks whose save failed
};

Beside ImportBesideClerks(int lines)
{
    const TestDatabase database;
    const QString file = PeopleFile(database, lines);
    std::vector<std::unique_ptr<Workstation>> all;
    for (int i = 0; i < clerks; ++i)
        all.push_back(std::make_unique<Workstation>(database, u"clerk"_qs, QStringList{QString::number(i)}));
    for (const auto &clerk : all)
        Torture::Require(clerk->WaitForFirstLine(), u"a clerk does not begin"_qs);
    Beside beside;
    beside.imported = Import(file, lines);
    for (const auto &clerk : all) {
        beside.stopped += clerk->IsRunning() ? 0 : 1;
        clerk->Kill();
        const QStringList times = clerk->Lines();
        beside.saves += static_cast<int>(times.size()) - 1;
        for (const QString &time : times)
            beside.longest = std::max(beside.longest, time.toDouble());
    }
    return beside;
}

double ImportAlone(int lines)
{
    const TestDatabase database;
    return Import(PeopleFile(database, lines), lines);
}

QList<Torture::Result> StarveClerks(const Torture::Plan &plan)
{
    const int lines = plan.Trials(100'000, 1'000'000);
    const double alone = ImportAlone(lines);
    const Beside beside = ImportBesideClerks(lines);
    const double slower = 100 * (beside.imported - alone) / alone;
    QList<Torture::Result> results{{u"4 clerks save beside an import: the longest save"_qs, beside.saves,
                                    beside.longest, 1'000, u"ms"_qs},
                                   {u"4 clerks save beside an import: clerks whose save failed"_qs,
                                    beside.saves, static_cast<double>(beside.stopped), 0, QString()}};
    if (!plan.isBrief) // the time of a short import says more about the machine than about the clerks
        results.append({u"the import beside 4 clerks: slower than alone"_qs, lines, slower, 10, u"%"_qs});
    return results;
}

const Torture::RoleRegistration role("clerk", Save);
const Torture::KindRegistration kind("waiting", Torture::Engines::File, StarveClerks);
} // namespace
