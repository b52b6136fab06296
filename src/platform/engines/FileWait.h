#pragma once

struct sqlite3;

/// How a workstation waits for the others that share its file. The engine's own way sleeps up to a tenth of
/// a second between two looks, and so never meets the moment in which a long loop lets go of the file.
namespace FileWait
{
struct Pace {
    int longest = 10'000; ///< milliseconds after which a statement gives up
    int between = 1;      ///< milliseconds between two looks; a look asks the server of a network file system
};

/// Waits with this pace from now on, and no longer once the file was moved away.
void Install(sqlite3 *handle, const Pace &pace);

/// Milliseconds that a long loop leaves the file alone between two groups, so that a workstation that waits
/// looks meanwhile.
constexpr int Gap(const Pace &pace)
{
    return 4 * pace.between;
}
} // namespace FileWait
