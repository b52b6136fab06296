#pragma once

struct sqlite3;

/// How a workstation waits for the others that share its file. The engine's own wait sleeps up to a tenth of
/// a second between two attempts, and so always misses the moment in which a long loop releases the file.
namespace FileWait
{
struct Pace {
    int longest = 10'000; ///< milliseconds after which a statement gives up
    int between =
        1; ///< milliseconds between two attempts, each of which asks the server of a network file system
};

/// Makes `handle` wait at this pace from now on, and stop waiting once the file has been moved away.
void Install(sqlite3 *handle, const Pace &pace);

/// Milliseconds that a long loop releases the file for between two groups, so that a waiting workstation
/// makes an attempt in that time.
constexpr int Gap(const Pace &pace)
{
    return 4 * pace.between;
}
} // namespace FileWait
