#pragma once

#include <QString>

#include <functional>

/// Benchmarks that compare the program with a twin which does the same work by hand, straight on the
/// engine. The ratio of the two is what counts: it holds on any machine.
namespace Bench
{
struct Case {
    QString unit;   ///< of what `ours` and `twin` give: "ms", "us", "MB"
    double bar = 1; ///< the most that ours may be of the twin
    int rounds = 7; ///< run in turn, ours and twin; the least of each counts
    std::function<double()> ours;
    std::function<double()> twin;
};

/// Prepares a benchmark when it runs. What it needs lives in what the functions of the case hold.
using Maker = std::function<Case()>;

/// Adds a benchmark. A file of benchmarks holds one object of this per benchmark.
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
