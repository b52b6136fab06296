#include "Bench.h"

#include <QApplication>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace
{
struct Entry {
    QString name;
    Bench::Maker maker;
};

std::vector<Entry> &Entries()
{
    static std::vector<Entry> entries;
    return entries;
}

/// Runs one benchmark and prints its line; false if it is over its bar.
bool RunOne(const Entry &entry)
{
    const Bench::Case benchmark = entry.maker();
    double ours = benchmark.ours();
    double twin = benchmark.twin();
    for (int round = 1; round < benchmark.rounds; ++round) {
        ours = std::min(ours, benchmark.ours());
        twin = std::min(twin, benchmark.twin());
    }
    const double ratio = ours / twin;
    const bool isOver = ratio > benchmark.bar;
    const QByteArray unit = benchmark.unit.toUtf8();
    std::printf("%-44s %10.3f %-2s %10.3f %-2s %7.3f %7.3f  %s\n", qPrintable(entry.name), ours,
                unit.constData(), twin, unit.constData(), ratio, benchmark.bar, isOver ? "over" : "ok");
    std::fflush(stdout);
    return !isOver;
}

/// The platform without windows warns for each window that it cannot hint sizes.
void PrintWithoutNoise(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (!message.startsWith(u"This plugin does not support"))
        std::fprintf(stderr, "%s\n", qPrintable(message));
}
} // namespace

Bench::Registration::Registration(const char *name, Maker maker)
{
    Entries().push_back({QString::fromUtf8(name), std::move(maker)});
}

double Bench::Milliseconds(const std::function<void()> &work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

void Bench::Require(bool worked, const QString &what)
{
    if (worked)
        return;
    std::fprintf(stderr, "veltrane_bench: %s\n", qPrintable(what));
    std::exit(2);
}

/// Arguments select the benchmarks whose names contain one of them; without any, all run.
int main(int argc, char **argv)
{
    qInstallMessageHandler(PrintWithoutNoise);
    QApplication application(argc, argv);
    const QStringList wanted = QApplication::arguments().mid(1);
    std::vector<Entry> &entries = Entries();
    std::sort(entries.begin(), entries.end(),
              [](const Entry &left, const Entry &right) { return left.name < right.name; });
    std::printf("%-44s %13s %13s %7s %7s\n", "name", "ours", "twin", "ratio", "bar");
    bool allWithin = true;
    for (const Entry &entry : entries) {
        const bool isWanted =
            wanted.isEmpty() || std::any_of(wanted.begin(), wanted.end(), [&entry](const QString &part) {
                return entry.name.contains(part);
            });
        if (isWanted)
            allWithin = RunOne(entry) && allWithin;
    }
    return allWithin ? 0 : 1;
}
