#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace platform {

/// Holds up the calling thread for this long. Stands alone in its source file, so that a test program can bring a
/// clock of its own that it turns by hand.
void SleepFor(std::chrono::milliseconds duration);

/// Holds up the calling thread for this long, but no longer than until `isOver` holds, which is looked at, with `lock`
/// held, whenever `changed` is notified.
void SleepUnless(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                 std::chrono::milliseconds duration, const std::function<bool()>& isOver);

} // namespace platform
