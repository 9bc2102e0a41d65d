#pragma once

#include <chrono>
#include <cstdint>

/// The duration of a stress test: one round, or all rounds that begin within the seconds in the environment variable
/// CONTROLLER_STRESS_SECONDS.
class Rounds {
public:
    Rounds();

    /// True if another round is to run. The first call always returns true.
    [[nodiscard]] bool Next();
    /// The current round, from 1; seeds the random numbers of the round.
    std::uint32_t Number() const { return number; }

private:
    std::uint32_t number = 0;
    std::chrono::steady_clock::time_point end;
};
