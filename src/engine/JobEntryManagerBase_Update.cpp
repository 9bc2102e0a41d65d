#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/RecordCopies.h"
#include "fault_points/FaultPoint.h"
#include "formats/JobStates.h"
#include "platform/system/Clock.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

/// Parses the job id and the verdict of a result report. On failure logs `kind` and returns false.
bool ReadResult(const std::wstring& json, const std::wstring& kind, std::wstring& jobId, bool& succeeded) {
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;
    if (ControllerCSWrapper::ParseRunScenarioResultString(json, jobId, succeeded, messages, outputFiles)) {
        return true;
    }
    ControllerLogManager::DebugLog(L"Skip " + kind + L" updates because a parse error has occurred: " + json);
    return false;
}

void ApplyResult(JobEntry& job, bool succeeded) {
    job.UpdateProgress(100, L"");
    job.ChangeStatus(succeeded ? JobStatus::Success : JobStatus::Failed);
    job.SetOutputFolder();
    job.SetEndTime(platform::Now());
}

} // namespace

bool JobEntryManagerBase::CheckUpdate(std::vector<JobStatusInfo>& changed) {
    const std::lock_guard lock(mutex);
    JobListChange change;
    for (const JobPosition position : ActiveJobs()) {
        const std::shared_ptr<JobEntry>& job = *position;
        if (IsActive(job->GetStatus()) && job->OnCheckUpdate()) {
            changed.push_back(job->GetJobStatusInfo());
            change.jobs.push_back(job);
        }
    }
    if (changed.empty()) {
        RecordCopies::OfProcess().ReleaseRested(std::chrono::steady_clock::now());
        return false;
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ChangesFound);
    UpdateJobList(change);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ChangesListed);
    return true;
}

bool JobEntryManagerBase::IsCompleted() {
    const std::lock_guard lock(mutex);
    if (nextJob != jobList.end()) {
        return false;
    }
    const std::vector<JobPosition> jobs = ActiveJobs();
    return std::none_of(jobs.begin(), jobs.end(), [](const auto& job) { return IsActive((*job)->GetStatus()); });
}

bool JobEntryManagerBase::UpdateProgress(const std::wstring& progressJson, std::vector<JobStatusInfo>& changed) {
    std::wstring jobId;
    std::wstring message;
    int progress = 0;
    if (!ControllerCSWrapper::ParseProgressFileString(progressJson, jobId, message, progress)) {
        ControllerLogManager::DebugLog(L"Skip progress updates because a parse error has occurred: " + progressJson);
        return false;
    }
    return ApplyReport(jobId, L"progress", changed, [progress](JobEntry& job) { job.UpdateProgress(progress, L""); });
}

bool JobEntryManagerBase::UpdateResult(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed) {
    const std::wstring kind = L"result";
    std::wstring jobId;
    bool succeeded = false;
    return ReadResult(resultJson, kind, jobId, succeeded) &&
           ApplyReport(jobId, kind, changed, [succeeded](JobEntry& job) { ApplyResult(job, succeeded); });
}

bool JobEntryManagerBase::UpdateToCanceled(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed) {
    const std::wstring kind = L"\"Canceled\" status";
    std::wstring jobId;
    bool succeeded = false;
    return ReadResult(resultJson, kind, jobId, succeeded) &&
           ApplyReport(jobId, kind, changed, [](JobEntry& job) { job.ChangeStatus(JobStatus::Canceled); });
}

bool JobEntryManagerBase::ApplyReport(const std::wstring& jobId, const std::wstring& kind,
                                      std::vector<JobStatusInfo>& changed,
                                      const std::function<void(JobEntry&)>& report) {
    const std::lock_guard lock(mutex);
    std::shared_ptr<JobEntry> job;
    if (!FindJobEntry(jobId, job)) {
        ControllerLogManager::DebugLog(L"JobID: " + jobId + L" is not found. Skip " + kind + L" updates.");
        return false;
    }
    report(*job);
    UpdateJobList({{job}, {}});
    changed.push_back(job->GetJobStatusInfo());
    return true;
}
