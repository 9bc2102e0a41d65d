#pragma once

#include <chrono>
#include <functional>
#include <vector>

/// Replaces the system clock: `platform::SleepFor` and `SleepUnless` return at once and report to this clock, which the
/// test advances; `SleepUnless` does not sleep if its condition holds. One object at a time; one must exist while code
/// sleeps.
class TurnedClock {
public:
    TurnedClock();
    ~TurnedClock();
    TurnedClock(const TurnedClock&) = delete;
    TurnedClock& operator=(const TurnedClock&) = delete;

    /// Called at the end of each sleep with the number of sleeps so far.
    std::function<void(int)> onSleep;

    int SleepCount() const { return static_cast<int>(sleeps.size()); }
    std::chrono::milliseconds Elapsed() const;
    /// True if every sleep had this duration.
    bool SleptOnly(std::chrono::milliseconds duration) const;

    void Sleep(std::chrono::milliseconds duration);

private:
    std::vector<std::chrono::milliseconds> sleeps;
};
