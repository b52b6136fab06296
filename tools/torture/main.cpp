#include "torture/Torture.h"

#include "support/TestDatabase.h"

#include <QApplication>
#include <QLocale>

#include <cstdio>
#include <cstdlib>
#include <map>

namespace
{
struct RegisteredKind {
    Torture::Engines engines;
    Torture::Kind run;
};

std::map<QString, RegisteredKind> &Kinds()
{
    static std::map<QString, RegisteredKind> kinds;
    return kinds;
}

std::map<QString, Torture::Role> &Roles()
{
    static std::map<QString, Torture::Role> roles;
    return roles;
}

bool RunsHere(Torture::Engines engines)
{
    if (engines == Torture::Engines::Both)
        return true;
    return (engines == Torture::Engines::Server) == TestDatabase::IsOnServer();
}

/// With few trials, a race without the guard can go well by chance.
const char *VerdictOn(const Torture::Result &result, const Torture::Plan &plan)
{
    if (!result.IsOver())
        return "ok";
    return result.isControl && plan.isBrief ? "not shown" : "over";
}

/// Prints a line for each result; false if one is over its bar.
bool RunOne(const QString &name, const Torture::Kind &run, const Torture::Plan &plan)
{
    bool isGood = true;
    for (const Torture::Result &result : run(plan)) {
        std::printf("%-10s %-10s %-58s %8d trials %10.6g %-5s (%s %g)  %s\n", qPrintable(name),
                    TestDatabase::IsOnServer() ? "PostgreSQL" : "file", qPrintable(result.what),
                    result.trials, result.measured, qPrintable(result.unit),
                    result.isControl ? "above" : "at most", result.bar, VerdictOn(result, plan));
        std::fflush(stdout);
        isGood = isGood && (!result.IsOver() || (result.isControl && plan.isBrief));
    }
    return isGood;
}

int PlayRole(const QStringList &arguments)
{
    const auto role = Roles().find(arguments.value(0));
    Torture::Require(role != Roles().end(), u"There is no role " % arguments.value(0));
    return role->second(arguments.mid(1));
}
} // namespace

Torture::KindRegistration::KindRegistration(const char *name, Engines engines, Kind kind)
{
    Kinds()[QString::fromUtf8(name)] = {engines, std::move(kind)};
}

Torture::RoleRegistration::RoleRegistration(const char *name, Role role)
{
    Roles()[QString::fromUtf8(name)] = std::move(role);
}

void Torture::Require(bool worked, const QString &what)
{
    if (worked)
        return;
    std::fprintf(stderr, "veltrane_torture: %s\n", qPrintable(what));
    std::exit(2);
}

/// [--brief] [kind...]: runs the named kinds, or all. --role NAME ARGUMENTS: plays another workstation.
int main(int argc, char **argv)
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    QApplication application(argc, argv);
    QStringList arguments = QApplication::arguments().mid(1);
    if (arguments.value(0) == u"--role")
        return PlayRole(arguments.mid(1));
    const Torture::Plan plan{arguments.removeAll(u"--brief"_qs) > 0};
    for (const QString &name : arguments)
        Torture::Require(Kinds().count(name) > 0, u"There is no kind " % name);
    bool isGood = true;
    for (const auto &[name, kind] : Kinds()) {
        if (RunsHere(kind.engines) && (arguments.isEmpty() || arguments.contains(name)))
            isGood = RunOne(name, kind.run, plan) && isGood;
    }
    return isGood ? 0 : 1;
}
