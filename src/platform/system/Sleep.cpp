#include "platform/system/Sleep.h"

#include <thread>

void platform::SleepFor(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}

void platform::SleepUnless(std::condition_variable& changed, std::unique_lock<std::mutex>& lock,
                           std::chrono::milliseconds duration, const std::function<bool()>& isOver) {
    changed.wait_for(lock, duration, isOver);
}
