#include "kit/doubles/TurnedClock.h"

#include "platform/system/Sleep.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace {

TurnedClock* current = nullptr;

} // namespace

TurnedClock::TurnedClock() {
    current = this;
}

TurnedClock::~TurnedClock() {
    current = nullptr;
}

std::chrono::milliseconds TurnedClock::Elapsed() const {
    return std::accumulate(sleeps.begin(), sleeps.end(), std::chrono::milliseconds::zero());
}

bool TurnedClock::SleptOnly(std::chrono::milliseconds duration) const {
    return std::all_of(sleeps.begin(), sleeps.end(), [duration](auto sleep) { return sleep == duration; });
}

void TurnedClock::Sleep(std::chrono::milliseconds duration) {
    sleeps.push_back(duration);
    if (onSleep) {
        onSleep(SleepCount());
    }
}

void platform::SleepUnless(std::condition_variable&, std::unique_lock<std::mutex>& lock,
                           std::chrono::milliseconds duration, const std::function<bool()>& isOver) {
    if (!isOver()) {
        lock.unlock();
        SleepFor(duration);
        lock.lock();
    }
}

void platform::SleepFor(std::chrono::milliseconds duration) {
    if (current == nullptr) {
        std::abort(); // the test has not created one
    }
    current->Sleep(duration);
}
