#include "controller_host/RetryPolicy.h"

#include <algorithm>

namespace retry_policy {
namespace {

/// Units: seconds.
constexpr std::int64_t longestDelay = 86400;

std::int64_t DelayAfter(const RunRules& rules, std::int32_t attempt) {
    const std::int64_t first = rules.retryDelay.value_or(0);
    if (!rules.retryBackoff.value_or(false)) {
        return first;
    }
    std::int64_t delay = first;
    for (std::int32_t i = 1; i < attempt && delay < longestDelay; ++i) {
        delay *= 2;
    }
    return std::min(delay, std::max(longestDelay, first));
}

} // namespace

std::wstring ReasonToStop(const RunRules& rules, const Attempt& attempt, std::int64_t now) {
    const std::int64_t timeLimit = rules.timeLimit.value_or(0);
    if (timeLimit > 0 && now - attempt.started >= timeLimit) {
        return L"it ran longer than its time limit of " + std::to_wstring(timeLimit) + L" s.";
    }
    const std::int64_t silenceLimit = rules.silenceLimit.value_or(0);
    if (silenceLimit > 0 && now - attempt.lastSign >= silenceLimit) {
        return L"it has shown neither progress nor output for " + std::to_wstring(silenceLimit) + L" s.";
    }
    return {};
}

std::optional<std::int64_t> NextAttempt(const RunRules& rules, std::int32_t attempt, bool hasCrashed,
                                        std::int64_t now) {
    const bool runsAgain = attempt < MostAttempts(rules) && (hasCrashed || !rules.retryOnlyAfterCrash.value_or(false));
    return runsAgain ? std::optional(now + DelayAfter(rules, attempt)) : std::nullopt;
}

} // namespace retry_policy
