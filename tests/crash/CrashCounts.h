#pragma once

#include "crash/Fault.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <string>

namespace crash {

/// What was done and looked at.
struct CrashCounts {
    std::array<std::size_t, faultPointCount> struck{};
    std::size_t killedFromOutside = 0;
    /// The fault did not come about; the host was killed from outside.
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
    /// A table for people.
    std::string Table() const;
    /// The names of the points that were never struck.
    std::string NeverStruck() const;
};

} // namespace crash
