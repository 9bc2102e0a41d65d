#include "frontend/ResponseFlags.h"

#include "platform/system/NeverDestroyed.h"
#include "platform/system/Sleep.h"

#include <condition_variable>
#include <mutex>

namespace response_flags {
namespace {

struct Change {
    std::mutex mutex;
    std::condition_variable happened;
};

/// Shared by both flags. Never destroyed: an answer may arrive until the process has ended.
Change& TheChange() {
    static Change& change = platform::MakeNeverDestroyed<Change>();
    return change;
}

} // namespace

ResponseFlag responseStarted;
ResponseFlag responseFinished;

ResponseFlag& ResponseFlag::operator=(bool raised) {
    {
        const std::lock_guard lock(TheChange().mutex);
        isRaised = raised;
    }
    TheChange().happened.notify_all();
    return *this;
}

void ResponseFlag::WaitFor(std::chrono::milliseconds longest) const {
    std::unique_lock lock(TheChange().mutex);
    platform::SleepUnless(TheChange().happened, lock, longest, [this] { return isRaised.load(); });
}

} // namespace response_flags
