#pragma once

#include "CommonControllerLib/JobEntry.h"
#include "text/Numbers.h"

#include <optional>
#include <set>
#include <string>
#include <utility>

/// Takes the name of a job, its id or else its number, out of what was requested, and returns it; nothing when neither
/// was there. So each requested name stands for one job at most, the first that it is tried on.
inline std::optional<std::wstring> TakeRequested(const JobEntry& job, std::set<std::wstring>& requested) {
    if (requested.erase(job.GetId()) > 0) {
        return job.GetId();
    }
    std::wstring number = numbers::DecimalText(job.GetSeqId());
    return requested.erase(number) > 0 ? std::optional(std::move(number)) : std::nullopt;
}
