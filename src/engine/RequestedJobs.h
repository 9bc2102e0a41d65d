#pragma once

#include "CommonControllerLib/JobEntry.h"
#include "text/Numbers.h"

#include <set>
#include <string>

/// Takes the name of a job, its id or else its number, out of what was requested; false when neither was there. So each
/// requested name stands for one job at most, the first that it is tried on.
inline bool TakeRequested(const JobEntry& job, std::set<std::wstring>& requested) {
    return requested.erase(job.GetId()) > 0 || requested.erase(numbers::DecimalText(job.GetSeqId())) > 0;
}
