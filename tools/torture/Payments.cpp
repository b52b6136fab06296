#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "enrolment/EnrolmentModule.h"
#include "platform/connection/OneStep.h"
#include "support/TestDatabase.h"
#include "torture/Torture.h"
#include "torture/Workstation.h"

#include <QRandomGenerator>
#include <QThread>

#include <cmath>
#include <memory>
#include <vector>

// Payments that are killed, and payments and enrolments that race: the log and the totals must stay equal,
// nobody may be enrolled twice, and no course beyond its limit.

namespace
{
constexpr int workstations = 4;
constexpr unsigned long pauseBeforeWrite = 200; ///< microseconds
constexpr int people = 6;
constexpr int places = 3; ///< of a course with a limit

void PauseBefore(const QString &write)
{
    gConnection.ObserveStatements([write](const QString &sql) {
        if (sql.startsWith(write))
            QThread::usleep(pauseBeforeWrite);
    });
}

/// Pays 1 in cash as the payment screen does: based on what it was shown, in a step of its own.
bool PayOne(int courseRef, int contactRef)
{
    const auto shown = Reported("PayOne", std::optional<StudentRecord>(),
                                [&] { return ReadStudent(CourseRef(courseRef), ContactRef(contactRef)); });
    if (!shown)
        return false;
    Fees::Payments act;
    act[Fees::Cash] = Money::OfHundredths(100);
    return Course_Pay(CourseRef(courseRef), ContactRef(contactRef), {*shown, *shown, act, {}}).outcome ==
           PaymentOutcome::Stored;
}

/// Arguments: how often each of the people on course 1 pays, and whether the guard is on. Prints a line for
/// each payment.
int PayAll(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    OneStep::SetGuarding(own.at(1) == u"guarded");
    PauseBefore(u"UPDATE"_qs);
    for (int round = 0; round < own.at(0).toInt(); ++round) {
        for (int person = 1; person <= people; ++person) {
            if (!PayOne(1, person))
                return 2;
            Workstation::Say(QString::number(person));
        }
    }
    return 0;
}

/// Enrols the same people on courses 1 to N, each workstation in a different order.
int EnrolAll(const QStringList &arguments)
{
    if (!Workstation::Begin(arguments))
        return 1;
    const QStringList own = Workstation::OwnArguments(arguments);
    OneStep::SetGuarding(own.at(1) == u"guarded");
    PauseBefore(u"INSERT"_qs);
    for (int course = 1; course <= own.at(0).toInt(); ++course) {
        for (int i = 0; i < people; ++i) {
            const int person = 1 + (i * 5 + own.at(2).toInt()) % people;
            if (ADO_Course_EnrollStudent(CourseRef(course), ContactRef(person), places) ==
                EnrolmentChange::Failed)
                return 2;
        }
    }
    return 0;
}

void AddCourses(int courses)
{
    WriteGroup group(gConnection);
    for (int course = 1; course <= courses; ++course)
        TestDatabase::Run(
            {u"INSERT INTO Courses (CourseRef,Title,Description,Fee,Limit,ReferenceID) VALUES (" %
             SqlNumber(course) % u",'Race','',1000000," % SqlNumber(places) % u",'')"});
    Torture::Require(group.Finish(), u"the courses could not be added"_qs);
}

void AddStudents()
{
    AddCourses(1);
    for (int person = 1; person <= people; ++person)
        ADO_Course_EnrollStudent(CourseRef(1), ContactRef(person));
}

double Sum(const QString &column, const QString &table)
{
    return TestDatabase::Value(u"SELECT SUM(" % column % u") AS S FROM " % table).toDouble();
}

/// What is in one record of the payments and not in the other.
double Missing()
{
    return std::abs(Sum(u"MoneyPaid"_qs, u"Transactions"_qs) - Sum(u"AmountPaid"_qs, u"StudentsEnrolled"_qs));
}

void RaceRole(const TestDatabase &database, const QString &role, int trials, bool isGuarded)
{
    std::vector<std::unique_ptr<Workstation>> all;
    for (int i = 0; i < workstations; ++i)
        all.push_back(std::make_unique<Workstation>(database, role,
                                                    QStringList{QString::number(trials),
                                                                isGuarded ? u"guarded"_qs : u"unguarded"_qs,
                                                                QString::number(i)}));
    for (const auto &workstation : all)
        Torture::Require(workstation->Finish(), u"a workstation of the race failed"_qs);
}

double RacePayments(int rounds, bool isGuarded)
{
    const TestDatabase database;
    AddStudents();
    RaceRole(database, u"paying"_qs, rounds, isGuarded);
    const double logged = Sum(u"MoneyPaid"_qs, u"Transactions"_qs);
    Torture::Require(logged == workstations * rounds * people, u"a payment of the race is not logged"_qs);
    return Missing();
}

/// Kills a workstation at a random moment; true if its payments are not the same in both records, or a
/// confirmed one is missing.
bool KillLoses(const TestDatabase &database, const QString &guard)
{
    const double before = Sum(u"AmountPaid"_qs, u"StudentsEnrolled"_qs);
    const double missing = Missing();
    Workstation workstation(database, u"paying"_qs, {u"1000000"_qs, guard, u"0"_qs});
    Torture::Require(workstation.WaitForFirstLine(), u"a workstation did not pay"_qs);
    QThread::usleep(QRandomGenerator::global()->bounded(20000U));
    workstation.Kill();
    const double confirmed = static_cast<double>(workstation.Lines().size());
    return Missing() != missing || Sum(u"AmountPaid"_qs, u"StudentsEnrolled"_qs) < before + confirmed;
}

double KillAll(int trials, const QString &guard)
{
    const TestDatabase database;
    AddStudents();
    int differing = 0;
    for (int trial = 0; trial < trials; ++trial)
        differing += KillLoses(database, guard) ? 1 : 0;
    return differing;
}

double RaceEnrolments(int courses, bool isGuarded)
{
    const TestDatabase database;
    AddCourses(courses);
    RaceRole(database, u"enrolling"_qs, courses, isGuarded);
    const auto groups = [](const QString &by, int most) {
        return TestDatabase::Rows(u"SELECT " % by % u", COUNT(*) AS N FROM StudentsEnrolled GROUP BY " % by %
                                  u" HAVING COUNT(*) > " % QString::number(most))
            .size();
    };
    const qsizetype twice = groups(u"CourseRef, ContactRef"_qs, 1);
    return static_cast<double>(twice + groups(u"CourseRef"_qs, places));
}

QList<Torture::Result> KillPaying(const Torture::Plan &plan)
{
    const int trials = plan.Trials(40, 300);
    const double differing = KillAll(trials, u"guarded"_qs);
    const double control = KillAll(trials, u"unguarded"_qs);
    return {{u"a kill while payments are taken"_qs, trials, differing, 0, u"lost"_qs},
            {u"the same without the guard"_qs, trials, control, 0, u"lost"_qs, true}};
}

QList<Torture::Result> RacePaying(const Torture::Plan &plan)
{
    const int rounds = plan.Trials(25, 250);
    const int trials = workstations * rounds * people;
    const double lost = RacePayments(rounds, true);
    const double control = RacePayments(rounds, false);
    return {{u"4 workstations take payments from the same students"_qs, trials, lost, 0, u"lost"_qs},
            {u"the same without the guard"_qs, trials, control, 0, u"lost"_qs, true}};
}

QList<Torture::Result> RaceEnrolling(const Torture::Plan &plan)
{
    const int courses = plan.Trials(150, 1000);
    const double faults = RaceEnrolments(courses, true);
    const double control = RaceEnrolments(courses, false);
    return {{u"4 workstations enrol the same people up to the limit"_qs, courses, faults, 0, u"wrong"_qs},
            {u"the same without the guard"_qs, courses, control, 0, u"wrong"_qs, true}};
}

const Torture::RoleRegistration payingRole("paying", PayAll);
const Torture::RoleRegistration enrollingRole("enrolling", EnrolAll);
const Torture::KindRegistration killed("paykill", Torture::Engines::Both, KillPaying);
const Torture::KindRegistration paid("paying", Torture::Engines::Both, RacePaying);
const Torture::KindRegistration enrolled("enrolling", Torture::Engines::Both, RaceEnrolling);
} // namespace
