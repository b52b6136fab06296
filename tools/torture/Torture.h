#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Ways of hurting the program, longer than a test may be: kills, races, starvation, full disks. Each file of
/// this folder registers its own kinds.
namespace Torture
{
/// How much of it: some three minutes in all, or until the figures can be trusted.
struct Plan {
    bool isBrief = false;
    int Trials(int brief, int full) const { return isBrief ? brief : full; }
};

/// What came of a kind on the engine that it ran on.
struct Result {
    QString what; ///< "two workstations add the same people"
    int trials = 0;
    double measured = 0; ///< what was lost, doubled or waited for, in `unit`
    double bar = 0;      ///< the most of it that may be
    QString unit;        ///< "lost", "ms"; "" = a count
    /// Ran without the guard: then `measured` must exceed `bar`, or the kind proves nothing. A brief plan
    /// only tells so.
    bool isControl = false;

    bool IsOver() const { return isControl ? measured <= bar : measured > bar; }
};

enum class Engines { File, Server, Both };

using Kind = std::function<QList<Result>(const Plan &plan)>;
/// What a process of its own does, which this program starts as another workstation: given its arguments, it
/// returns its exit code.
using Role = std::function<int(const QStringList &arguments)>;

/// Registers a kind at start.
class KindRegistration final
{
public:
    KindRegistration(const char *name, Engines engines, Kind kind);
};

/// Registers the role of a workstation at start.
class RoleRegistration final
{
public:
    RoleRegistration(const char *name, Role role);
};

/// Ends the program where what a kind needs cannot be had.
void Require(bool worked, const QString &what);
} // namespace Torture
