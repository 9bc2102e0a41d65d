#include "controller_host/HostEngine.h"

#include <algorithm>

namespace {

bool IsActive(JobEntry& job) {
    return job.GetStatus() == JobStatus::Running || job.GetStatus() == JobStatus::Canceling;
}

} // namespace

std::vector<void*> HostEngine::ActiveProcesses() {
    const std::lock_guard lock(mutex);
    std::vector<void*> processes;
    for (const auto& job : jobList) {
        if (IsActive(*job) && job->GetProcessHandle() != nullptr) {
            processes.push_back(job->GetProcessHandle());
        }
    }
    return processes;
}

bool HostEngine::HasActiveJobs() {
    const std::lock_guard lock(mutex);
    return std::any_of(jobList.begin(), jobList.end(), [](const auto& job) { return IsActive(*job); });
}

std::vector<JobStatusInfo> HostEngine::StatusOf(const std::vector<JobIdInfo>& jobs) {
    std::set<std::wstring> ids;
    for (const JobIdInfo& job : jobs) {
        ids.insert(job.id);
    }
    const std::lock_guard lock(mutex);
    std::vector<JobStatusInfo> statuses;
    for (const auto& job : jobList) {
        if (ids.contains(job->GetId())) {
            statuses.push_back(job->GetJobStatusInfo());
        }
    }
    return statuses;
}

std::vector<JobStatusInfo> HostEngine::NoLongerListed(const std::vector<JobListInfo>& jobs) {
    const std::set<std::wstring> listed = ListedIds();
    std::vector<JobStatusInfo> gone;
    for (const JobListInfo& job : jobs) {
        if (!listed.contains(job.id)) {
            JobStatusInfo& report = gone.emplace_back();
            report.id = job.id;
            report.status = unknownStatus;
        }
    }
    return gone;
}

std::set<std::wstring> HostEngine::ListedIds() {
    const std::lock_guard lock(mutex);
    std::set<std::wstring> ids;
    for (const auto& job : jobList) {
        ids.insert(job->GetId());
    }
    return ids;
}
