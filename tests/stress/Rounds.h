#pragma once

#include <chrono>
#include <cstdint>

/// How long a stress test goes on: one round, or as many as begin within the seconds that the environment variable
/// CONTROLLER_STRESS_SECONDS names.
class Rounds {
public:
    Rounds();

    /// True when another round is to be run. The first one always is.
    [[nodiscard]] bool Next();
    /// The round that runs, from 1 on; random numbers of a round begin with it.
    std::uint32_t Number() const { return number; }

private:
    std::uint32_t number = 0;
    std::chrono::steady_clock::time_point end;
};
