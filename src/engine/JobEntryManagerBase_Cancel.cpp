#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "engine/ModuleCall.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "formats/RunFileNames.h"
#include "platform/files/FileSystem.h"
#include "text/Numbers.h"

#include <thread>

bool JobEntry::OnCancelJob() {
    ControllerLogManager::DebugLog(L"Create killprocess for Job: " + numbers::DecimalText(info.seqId));
    // A failure is not reported: the job may just have ended and its directory may be gone.
    (void)platform::CreateEmptyFile(PathFuncs::Join(info.workDir, run_protocol::killFileName));
    fault_points::ReachFaultPoint(fault_points::FaultPoint::KillFileMade);
    return true;
}

bool JobEntryManagerBase::CancelJobs(std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& cancelled,
                                     bool waitForCanceled) {
    WaitList waitList;
    JobListChange change;
    {
        const std::lock_guard lock(mutex);
        std::set<std::wstring> requested(ids.begin(), ids.end());
        for (const JobPosition position : JobsNamed(requested)) {
            const std::shared_ptr<JobEntry>& job = *position;
            if (queue::TakeRequested(job->GetId(), job->GetSeqId(), requested)) {
                CancelJob(job, cancelled, waitList);
                change.jobs.push_back(job);
            }
        }
    }
    while (waitForCanceled && !waitList.empty()) {
        {
            const std::lock_guard lock(mutex);
            std::erase_if(waitList, [](const auto& job) { return job->GetStatus() != JobStatus::Canceling; });
        }
        // A mutex need not be fair: without the yield, another thread could wait many milliseconds for it.
        std::this_thread::yield();
    }
    if (!cancelled.empty()) {
        const std::lock_guard lock(mutex);
        fault_points::ReachFaultPoint(fault_points::FaultPoint::CancelsDone);
        KeepListed(change.jobs);
        UpdateJobList(change);
        fault_points::ReachFaultPoint(fault_points::FaultPoint::CancelsListed);
    }
    return true;
}

void JobEntryManagerBase::KeepListed(std::vector<std::shared_ptr<JobEntry>>& jobs) {
    std::set<std::wstring> ids;
    for (const auto& job : jobs) {
        ids.insert(job->GetId());
    }
    std::set<std::shared_ptr<JobEntry>> listed;
    for (const JobPosition position : JobsNamed(ids)) {
        listed.insert(*position);
    }
    std::erase_if(jobs, [&listed](const auto& job) { return !listed.contains(job); });
}

void JobEntryManagerBase::CancelJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled,
                                    WaitList& waitList) {
    const std::optional<JobStatus> next = queue::AfterCancel(job->GetStatus());
    if (next == JobStatus::Canceling) {
        CancelRunningJob(job, cancelled, waitList);
    } else if (next) {
        job->ChangeStatus(*next);
        cancelled.push_back(job->GetJobStatusInfo());
    }
}

/// Asks the job to stop in two ways and appends one report for each that succeeded: a job whose module accepted the
/// request is reported twice.
void JobEntryManagerBase::CancelRunningJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled,
                                           WaitList& waitList) {
    const auto report = [&] {
        cancelled.push_back(job->GetJobStatusInfo());
        waitList.push_back(job);
    };
    job->ChangeStatus(JobStatus::Canceling);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::CancelStatusChanged);
    std::wstring answer;
    const std::string activity = "cancelled Job: " + std::to_string(job->GetSeqId());
    if (CallModule(*functionManager, "CancelScenario", job->GetId(), answer, nullptr, activity) == 0) {
        report();
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::CancelModuleCalled);
    if (job->OnCancelJob()) {
        report();
    }
}

bool JobEntryManagerBase::CancelAllJobs(std::vector<JobStatusInfo>& cancelled, bool waitForCanceled) {
    ControllerLogManager::DebugLog(std::string("Cancel all jobs"));
    std::vector<std::wstring> ids;
    for (const auto& job : jobList) {
        ids.push_back(job->GetId());
    }
    return CancelJobs(ids, cancelled, waitForCanceled);
}

void JobEntryManagerBase::Terminate() {
    std::wstring answer;
    // A module without that function needs no notification.
    (void)CallModule(*functionManager, "Terminate", L"", answer, nullptr, "terminated");
}
