#include "platform/engines/FileWait.h"

#include "platform/engines/FileOpen.h"

#include <sqlite3.h>

#include <chrono>
#include <memory>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;

struct Waiting {
    sqlite3 *handle;
    FileWait::Pace pace;
    Clock::time_point begun{};
};

int LookAgain(void *given, int looks)
{
    auto &waiting = *static_cast<Waiting *>(given);
    if (looks == 0)
        waiting.begun = Clock::now();
    if (Clock::now() - waiting.begun >= std::chrono::milliseconds(waiting.pace.longest) ||
        FileOpen::HasMoved(waiting.handle))
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(waiting.pace.between));
    return 1;
}
} // namespace

void FileWait::Install(sqlite3 *handle, const Pace &pace)
{
    auto waiting = std::make_unique<Waiting>(Waiting{handle, pace});
    sqlite3_busy_handler(handle, LookAgain, waiting.get());
    sqlite3_set_clientdata(handle, "veltrane_wait", waiting.release(),
                           [](void *old) { delete static_cast<Waiting *>(old); });
}
