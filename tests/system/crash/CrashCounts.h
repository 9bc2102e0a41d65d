#pragma once

#include "system/crash/Fault.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <string>

namespace crash {

/// Counts of operations and checks.
struct CrashCounts {
    std::array<std::size_t, faultPointCount> struck{};
    std::size_t killedFromOutside = 0;
    /// The fault was not reached; the host was killed from outside.
    std::size_t notReached = 0;
    std::size_t endedAsAsked = 0;
    std::size_t hostsStarted = 0;
    std::size_t listsParsed = 0;
    std::size_t jobsCompared = 0;
    std::size_t jobsAcknowledged = 0;
    std::size_t deletionsAcknowledged = 0;
    std::size_t workDirectoriesCompared = 0;
    std::size_t processesLookedFor = 0;
    std::chrono::milliseconds longestSurvival{0};

    std::size_t Kills() const;
    /// A table for the output.
    std::string Table() const;
    /// The names of the points that were never hit.
    std::string NeverStruck() const;
};

} // namespace crash
