#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace platform {

/// Blocks the calling thread for `duration`. Alone in its source file, so that a test program can replace it by a
/// manual clock.
void SleepFor(std::chrono::milliseconds duration);

/// Blocks the calling thread for `duration` or until `isOver` holds. `isOver` is evaluated with `lock` held whenever
/// `changed` is notified.
void SleepUnless(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                 std::chrono::milliseconds duration, const std::function<bool()>& isOver);

} // namespace platform
