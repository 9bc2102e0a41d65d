#include "controller_host/ReuseCandidates.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

/// Different jobs may have the same key.
std::size_t KeyOf(const JobListInfo& job) {
    std::wstring text = job.scenario.path + L'\n' + job.runArgument;
    for (const std::wstring& input : job.inputFiles) {
        text += L'\n' + input;
    }
    return std::hash<std::wstring>()(text);
}

} // namespace

void ReuseCandidates::Update(const JobListInfo& job) {
    if (job.status == JobStatus::Success && !job.inputFiles.empty()) {
        jobs[KeyOf(job)].insert_or_assign(job.seqId, job.id);
    } else {
        Remove(job);
    }
}

void ReuseCandidates::Remove(const JobListInfo& job) {
    const auto found = jobs.find(KeyOf(job));
    if (found == jobs.end()) {
        return;
    }
    found->second.erase(job.seqId);
    if (found->second.empty()) {
        jobs.erase(found);
    }
}

std::vector<std::wstring> ReuseCandidates::Of(const JobListInfo& job) const {
    std::vector<std::wstring> ids;
    const auto found = jobs.find(KeyOf(job));
    if (found != jobs.end() && !job.inputFiles.empty()) {
        const auto& equal = found->second;
        std::transform(equal.rbegin(),
                       std::next(equal.rbegin(), static_cast<std::ptrdiff_t>(std::min(most, equal.size()))),
                       std::back_inserter(ids), [](const auto& entry) { return entry.second; });
    }
    return ids;
}
