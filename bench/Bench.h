#pragma once

#include <QString>

#include <functional>

/// Benchmarks that compare the program with a twin that does the same work by hand, directly on the engine.
/// What counts is the ratio of the two, which is the same on any machine.
namespace Bench
{
struct Case {
    QString unit;   ///< of what `ours` and `twin` return: "ms", "us", "MB"
    double bar = 1; ///< the highest allowed ratio of ours to the twin
    int rounds = 7; ///< ours and twin run in turn; the lowest of each counts
    std::function<double()> ours;
    std::function<double()> twin;
};

/// Prepares a benchmark when it is run. What it needs is kept alive by the functions of the case.
using Maker = std::function<Case()>;

/// Adds a benchmark. A file has one object of this class for each of its benchmarks.
class Registration final
{
public:
    Registration(const char *name, Maker maker);
};

/// How long `work` takes, in milliseconds.
double Milliseconds(const std::function<void()> &work);
/// Stops the run: a benchmark whose work fails measures nothing.
void Require(bool worked, const QString &what);
} // namespace Bench
