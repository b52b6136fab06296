#include "core/shell/Screens.h"
#include "core/shell/frmMain.h"
#include "forms/frames/FormStyle.h"
#include "forms/frames/StandardDialogs.h"
#include "torture/MonkeyHome.h"
#include "torture/MonkeyOutcome.h"
#include "torture/MonkeyRun.h"
#include "torture/Torture.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QThreadPool>

#include <atomic>
#include <cstdio>

// A monkey at the keyboard and the mouse of the real main window. Each seed runs in a process of its own; if
// one ends with a crash, a warning from the toolkit, a broken database or a window that does not close, the
// session is reduced to its last keys.

namespace
{
constexpr int monkeysOnACore = 4;
constexpr int longestTold = 60;

void WriteFile(const QString &name, const QString &text)
{
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    file.write(text.toUtf8());
}

QStringList LinesOf(const QString &name)
{
    QFile file(name);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

/// "run" SEED STEPS FILE: writes what it does to the file. "play" FILE: plays such a file.
int PlayMonkey(const QStringList &arguments)
{
    QApplication::setStyle(u"Fusion"_qs);
    QApplication::setQuitOnLastWindowClosed(false);
    InstallFormStyle();
    InstallStandardDialogs();
    Screens::Install();
    frmMain::AssumeScreenWidth(1280);
    MonkeyHome home;
    if (arguments.value(0) == u"run") {
        MonkeyRun(home, arguments.value(1).toUInt(), arguments.value(2).toInt(), arguments.value(3)).Run();
        return 0;
    }
    MonkeyRun(home, LinesOf(arguments.value(1))).Run();
    return 0;
}

/// The folder, empty at first, for the keys of a seed that found a fault.
QString FolderOfKeys()
{
    QDir folder(QCoreApplication::applicationDirPath() % u"/../monkey");
    folder.removeRecursively();
    folder.mkpath(u"."_qs);
    return folder.canonicalPath();
}

/// True if the seed found nothing; otherwise prints its last keys and the fault.
bool TrySeed(int seed, int steps, const QString &folder)
{
    const QString file = folder % u"/seed-" % QString::number(seed);
    const MonkeyOutcome outcome =
        MonkeyOutcome::Of({u"run"_qs, QString::number(seed), QString::number(steps), file});
    std::fprintf(stderr, "monkey, seed %d: %s\n", seed, qPrintable(outcome.Verdict()));
    if (outcome.isGood) {
        QFile::remove(file);
        return true;
    }
    WriteFile(file % u"-report", outcome.said);
    const QStringList keys = ReducedKeys(LinesOf(file), outcome, file % u"-reduced");
    const QStringList last = keys.mid(qMax<qsizetype>(0, keys.size() - longestTold));
    std::fprintf(stderr, "monkey, seed %d: its session, its %d needed keys and the report are in %s*\n%s\n",
                 seed, static_cast<int>(keys.size()), qPrintable(file), qPrintable(last.join(u'\n')));
    return false;
}

QList<Torture::Result> LetLoose(const Torture::Plan &plan)
{
    const QString folder = FolderOfKeys();
    const int seeds = plan.Trials(2, 50);
    const int steps = plan.Trials(10'000, 20'000);
    const int first = qEnvironmentVariableIntValue("VELTRANE_MONKEY_SEED");
    std::atomic<int> faults = 0;
    QThreadPool monkeys;
    // Most of the time they wait for the program's timers.
    monkeys.setMaxThreadCount(QThread::idealThreadCount() * monkeysOnACore);
    for (int seed = first + 1; seed <= first + seeds; ++seed) {
        monkeys.start([&faults, &folder, seed, steps] {
            if (!TrySeed(seed, steps, folder))
                ++faults;
        });
    }
    monkeys.waitForDone();
    return {{u"random keys, clicks and texts: crashes, warnings, damage"_qs, seeds * steps,
             static_cast<double>(faults), 0, u"found"_qs}};
}

const Torture::RoleRegistration role("monkey", PlayMonkey);
const Torture::KindRegistration kind("monkey", Torture::Engines::File, LetLoose);
} // namespace
