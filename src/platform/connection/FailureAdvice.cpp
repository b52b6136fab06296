#include "platform/connection/FailureAdvice.h"

#include "platform/connection/EngineError.h"

#include <algorithm>
#include <array>

namespace
{
enum class Cause {
    Locked,
    Conflict,
    Full,
    ReadOnly,
    Unreachable,
    Damaged,
    Replaced,
    NotOpen,
    TooLong,
    NoRight
};

struct Numbered {
    int number;
    Cause cause;
};

struct Stated {
    const char *state; ///< a whole SQL state, or the class that it begins with
    Cause cause;
};

// The file engine's numbers end at 26, and 3709 is the program's own; the others belong to SQL Server and its
// driver.
constexpr std::array<Numbered, 28> numbers{{
    {5, Cause::Locked},          {6, Cause::Locked},          {8, Cause::ReadOnly},
    {10, Cause::Unreachable},    {11, Cause::Damaged},        {13, Cause::Full},
    {14, Cause::ReadOnly},       {26, Cause::Replaced},       {3709, Cause::NotOpen},
    {229, Cause::NoRight},       {230, Cause::NoRight},       {262, Cause::NoRight},
    {1105, Cause::Full},         {1205, Cause::Conflict},     {1222, Cause::Locked},
    {2628, Cause::TooLong},      {3906, Cause::ReadOnly},     {3960, Cause::Conflict},
    {8152, Cause::TooLong},      {9002, Cause::Full},         {10053, Cause::Unreachable},
    {10054, Cause::Unreachable}, {20003, Cause::Unreachable}, {20004, Cause::Unreachable},
    {20006, Cause::Unreachable}, {20009, Cause::Unreachable}, {20017, Cause::Unreachable},
    {20047, Cause::Unreachable},
}};

constexpr std::array<Stated, 9> states{{
    {"08", Cause::Unreachable},
    {"57P", Cause::Unreachable},
    {"55P03", Cause::Locked},
    {"40", Cause::Conflict},
    {"53100", Cause::Full},
    {"25006", Cause::ReadOnly},
    {"42501", Cause::NoRight},
    {"22001", Cause::TooLong},
    {"HYT", Cause::Locked},
}};

QString TextOf(Cause cause, const QString &description)
{
    switch (cause) {
    case Cause::Locked:
        return QStringLiteral("The database is locked by another workstation. Try again in a moment.");
    case Cause::Conflict:
        return QStringLiteral("Another workstation was changing the same rows. Try again.");
    case Cause::Full:
        return QStringLiteral("The disk of the database is full. Make room on it, then try again.");
    case Cause::ReadOnly:
        return QStringLiteral("The database or its folder is read-only. Ask for the right to write there.");
    case Cause::Unreachable:
        return QStringLiteral("The database cannot be reached: its disk, the network or the server failed. "
                              "Check the connection, then log off and log on again.");
    case Cause::Damaged:
        return QStringLiteral("The database file is damaged. Stop working with it and restore a copy.");
    case Cause::Replaced:
        return QStringLiteral("The database file was replaced, or its password was changed. Log off and log "
                              "on again.");
    case Cause::NotOpen:
        return QStringLiteral("No database is open. Choose one with Switch Database.");
    case Cause::TooLong:
        // The driver's words are the only ones that may tell which text it is.
        return u"A text is longer than the database allows there. Shorten it.\n" % description;
    case Cause::NoRight:
        return QStringLiteral("The database's administrator has not given you the right to do this.");
    }
    return {};
}
} // namespace

QString FailureAdvice(const EngineError &error)
{
    const auto stated = std::find_if(states.begin(), states.end(), [&](const Stated &known) {
        return error.sqlState.startsWith(QLatin1String(known.state));
    });
    if (stated != states.end())
        return TextOf(stated->cause, error.description);
    const auto numbered = std::find_if(numbers.begin(), numbers.end(),
                                       [&](const Numbered &known) { return known.number == error.number; });
    return numbered == numbers.end() ? error.description : TextOf(numbered->cause, error.description);
}
