#pragma once

#include <chrono>
#include <functional>
#include <vector>

/// In the place of the system's clock: `platform::SleepFor` and `SleepUnless` of this program return at once, the
/// latter without sleeping at all where there is nothing to wait for, and tell the clock, which a test turns. One at a
/// time; one must live while something sleeps.
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
    /// True when every sleep was this long.
    bool SleptOnly(std::chrono::milliseconds duration) const;

    void Sleep(std::chrono::milliseconds duration);

private:
    std::vector<std::chrono::milliseconds> sleeps;
};
