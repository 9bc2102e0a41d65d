#include "controller_host/RetryPolicy.h"

#include <algorithm>

namespace retry_policy {
namespace {

/// Units: seconds.
constexpr std::int64_t longestDelay = 86400;

std::int64_t DelayAfter(const Scheduling& scheduling, std::int32_t attempt) {
    std::int64_t delay = scheduling.retryDelay;
    for (std::int32_t i = 1; scheduling.retryBackoff && i < attempt && delay < longestDelay; ++i) {
        delay *= 2;
    }
    return scheduling.retryBackoff ? std::min(delay, std::max(longestDelay, scheduling.retryDelay)) : delay;
}

} // namespace

std::wstring ReasonToStop(const Scheduling& scheduling, const Attempt& attempt, std::int64_t now) {
    if (scheduling.timeLimit > 0 && now - attempt.started >= scheduling.timeLimit) {
        return L"it ran longer than its time limit of " + std::to_wstring(scheduling.timeLimit) + L" s.";
    }
    if (scheduling.silenceLimit > 0 && now - attempt.lastSign >= scheduling.silenceLimit) {
        return L"it has shown neither progress nor output for " + std::to_wstring(scheduling.silenceLimit) + L" s.";
    }
    return {};
}

std::optional<std::int64_t> NextAttempt(const Scheduling& scheduling, std::int32_t attempt, bool hasCrashed,
                                        std::int64_t now) {
    const bool runsAgain = attempt <= scheduling.retries && (hasCrashed || !scheduling.retryOnlyAfterCrash);
    return runsAgain ? std::optional(now + DelayAfter(scheduling, attempt)) : std::nullopt;
}

} // namespace retry_policy
