#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Ways of mistreating the program that take too long for a test: kills, races, starvation, full disks. Each
/// file in this folder registers its own kinds.
namespace Torture
{
/// How long to go on: some three minutes in all, or until the figures can be trusted.
struct Plan {
    bool isBrief = false;
    int Trials(int brief, int full) const { return isBrief ? brief : full; }
};

/// The result of a kind on one engine.
struct Result {
    QString what; ///< "two workstations add the same people"
    int trials = 0;
    double measured = 0; ///< what was lost, doubled or waited for, in `unit`
    double bar = 0;      ///< the most that is allowed
    QString unit;        ///< "lost", "ms"; "" = a count
    /// True if it ran without the guard: then `measured` must exceed `bar`, or the kind proves nothing. A
    /// brief plan only reports it.
    bool isControl = false;

    bool IsOver() const { return isControl ? measured <= bar : measured > bar; }
};

enum class Engines { File, Server, Both };

using Kind = std::function<QList<Result>(const Plan &plan)>;
/// What a separate process does that this program starts as another workstation: takes its arguments, and
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

/// Ends the program if something that a kind needs is not available.
void Require(bool worked, const QString &what);
} // namespace Torture
