#include "core/shell/Screens.h"
#include "core/shell/frmMain.h"
#include "forms/frames/FormStyle.h"
#include "forms/frames/StandardDialogs.h"
#include "torture/MonkeyHome.h"
#include "torture/MonkeyRun.h"
#include "torture/Torture.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

// A monkey at the keyboard and the mouse of the real main window. Each seed runs in a process of its own;
// where one ends by a crash, a warning of the toolkit, a broken database or a window that does not close, the
// run is reduced to its last keys.

namespace
{
constexpr int stepsOfASeed = 20'000;
constexpr int longestSilence = 180'000; ///< milliseconds; a program that says nothing for so long hangs
constexpr int shortestReplay = 4;
constexpr int longestReplay = 4096;
constexpr int longestTold = 60;

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
    QFile file(arguments.value(1));
    Torture::Require(file.open(QIODevice::ReadOnly), u"There is no " % file.fileName());
    MonkeyRun(home, QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)).Run();
    return 0;
}

struct Outcome {
    bool isGood = false;
    bool hangs = false;
    QString said; ///< its last lines, what a sanitizer says among them
};

Outcome RunProcess(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{u"--role"_qs, u"monkey"_qs} + arguments);
    QByteArray said;
    while (process.waitForReadyRead(longestSilence))
        said = QByteArray(said + process.readAll()).right(20'000);
    const bool ended = process.state() == QProcess::NotRunning || process.waitForFinished(1000);
    if (!ended)
        process.kill();
    process.waitForFinished();
    said += process.readAll();
    return {.isGood = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            .hangs = !ended,
            .said = QString::fromUtf8(said) % (ended ? QString() : u"\nfault: it hangs\n"_qs)};
}

bool FailsAgain(const QStringList &keys, const QString &file)
{
    QFile played(file);
    played.open(QIODevice::WriteOnly);
    played.write(keys.join(u'\n').toUtf8());
    played.close();
    return !RunProcess({u"play"_qs, file}).isGood;
}

QStringList LastOf(const QStringList &keys, qsizetype length)
{
    return keys.mid(qMax<qsizetype>(0, keys.size() - length));
}

/// The shortest end of a run that fails as well, with what is not needed of it left out; the last of it where
/// none does.
QStringList Reduced(const QStringList &keys, const QString &file)
{
    QStringList least = LastOf(keys, longestTold);
    for (int length = shortestReplay; length <= longestReplay; length *= 2) {
        const QStringList end = LastOf(keys, length);
        if (!FailsAgain(end, file))
            continue;
        least = end;
        for (qsizetype step = least.size() / 2; step > 0; step /= 2) {
            for (qsizetype at = 0; at + step <= least.size();) {
                const QStringList fewer = least.mid(0, at) + least.mid(at + step);
                if (FailsAgain(fewer, file))
                    least = fewer;
                else
                    at += step;
            }
        }
        return least;
    }
    return least;
}

void Tell(int seed, const QString &said, const QStringList &keys)
{
    std::fprintf(stderr, "monkey, seed %d:\n%s\nits last keys:\n%s\n", seed, qPrintable(said.right(6000)),
                 qPrintable(keys.join(u'\n')));
}

QList<Torture::Result> LetLoose(const Torture::Plan &plan)
{
    const QTemporaryDir directory;
    const int seeds = plan.Trials(1, 50);
    const int first = qEnvironmentVariableIntValue("VELTRANE_MONKEY_SEED");
    int faults = 0;
    for (int seed = first + 1; seed <= first + seeds; ++seed) {
        const QString file = directory.filePath(u"keys"_qs);
        const Outcome outcome =
            RunProcess({u"run"_qs, QString::number(seed), QString::number(stepsOfASeed), file});
        if (outcome.isGood)
            continue;
        ++faults;
        QFile written(file);
        written.open(QIODevice::ReadOnly);
        const QStringList keys = QString::fromUtf8(written.readAll()).split(u'\n', Qt::SkipEmptyParts);
        // To see a hang takes minutes each time.
        Tell(seed, outcome.said,
             outcome.hangs ? LastOf(keys, longestTold) : Reduced(keys, directory.filePath(u"play"_qs)));
    }
    return {{u"random keys, clicks and texts: crashes, warnings, damage"_qs, seeds * stepsOfASeed,
             static_cast<double>(faults), 0, u"found"_qs}};
}

const Torture::RoleRegistration role("monkey", PlayMonkey);
const Torture::KindRegistration kind("monkey", Torture::Engines::File, LetLoose);
} // namespace
