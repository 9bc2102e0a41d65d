#pragma once

#include "formats/Scheduling.h"

#include <cstdint>
#include <optional>
#include <string>

/// When a running job is stopped and when a failed one runs again. Pure functions; times in seconds since 1970 UTC.
namespace retry_policy {

/// How an attempt went on so far.
struct Attempt {
    std::int64_t started = 0;
    /// The last change of its progress or output.
    std::int64_t lastSign = 0;
};

/// Returns why an attempt has to be stopped now, in a sentence for people; empty if it may go on.
std::wstring ReasonToStop(const RunRules& rules, const Attempt& attempt, std::int64_t now);

/// Returns the time at which a job runs again whose attempt has failed; nothing if it does not. `attempt` is the number
/// of that attempt, from 1 on. `hasCrashed`: it was killed, stopped by a limit, or ended by a crash.
std::optional<std::int64_t> NextAttempt(const RunRules& rules, std::int32_t attempt, bool hasCrashed, std::int64_t now);

} // namespace retry_policy
