#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "platform/system/Clock.h"

JobEntryManagerBase::JobEntryManagerBase(const FunctionManager* manager) : JobEntryManagerBase(manager, Loading()) {}

JobEntryManagerBase::JobEntryManagerBase(const FunctionManager* manager, const Loading& loading)
    : functionManager(manager), nextJob(jobList.end()), nextSeqId(1) {
    ReloadJobs(loading);
    if (loading.deletesOldJobs) {
        DeleteOldJobs([this](auto& ids, auto& deleted) { return DeleteJobs(ids, deleted); });
    }
}

JobEntry* JobEntryManagerBase::CreateNewJobEntry(const JobListInfo* info) {
    return info == nullptr ? new JobEntry() : new JobEntry(*info);
}

void JobEntryManagerBase::ReloadJobs(const Loading& loading) {
    const std::lock_guard lock(mutex);
    if (loading.readJobs) {
        loading.readJobs(jobList);
    } else {
        ReadJobList(jobList);
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ListRead);
    for (const auto& job : jobList) {
        knownJobIds.insert(job->GetId());
    }
    nextJob = jobList.end();
    for (const auto& job : jobList) {
        AdoptListedJob(*job, loading);
    }
}

void JobEntryManagerBase::AdoptListedJob(JobEntry& job, const Loading& loading) {
    nextSeqId = queue::NextNumber(nextSeqId, job.GetSeqId());
    const JobStatus status =
        queue::AfterRestart(job.GetStatus(), {loading.keepsDequeued, loading.keepsQueued, loading.requeuesRunning});
    if (status != job.GetStatus()) {
        job.ChangeStatus(status);
    }
}

void JobEntryManagerBase::DeleteOldJobs(const JobDeletion& deleteJobs) {
    int days = 0;
    if (!ControllerCSWrapper::IsAutoDeleteWorkFolder(days) || days < 1) {
        return;
    }
    std::vector<std::wstring> ids = JobsOlderThan(days * 3600.0 * 24.0);
    std::vector<std::wstring> deleted;
    if (!ids.empty() && deleteJobs(ids, deleted)) {
        ControllerLogManager::Log(std::to_wstring(deleted.size()) + L" jobs are deleted.");
    }
}

std::vector<std::wstring> JobEntryManagerBase::JobsOlderThan(double seconds) {
    const std::int64_t now = platform::Now();
    std::vector<std::wstring> ids;
    for (const auto& job : jobList) {
        // A job that was never started has the start time -1 and is therefore older than any limit.
        if (static_cast<double>(now - job->GetStartTime()) > seconds) {
            ids.push_back(job->GetId());
        }
    }
    return ids;
}
