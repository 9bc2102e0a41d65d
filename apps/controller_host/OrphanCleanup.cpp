#include "controller_host/OrphanCleanup.h"

#include <set>

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/ModuleCall.h"
#include "formats/JobStates.h"
#include "formats/RunProtocol.h"
#include "platform/files/FileSystem.h"
#include "platform/processes/Orphans.h"

namespace {

void RequestStop(const JobListInfo& job) {
    if (IsActive(job.status) && platform::IsDirectory(job.workDir)) {
        ControllerLogManager::WarnLog(L"Job: " + std::to_wstring(job.seqId) +
                                      L" was left running by an earlier host; its scenario is asked to stop.");
        // On failure the processes are killed in any case.
        (void)platform::CreateEmptyFileIn(job.workDir, run_protocol::killFileName);
    }
}

/// A job that is queued again has ended an attempt; the next one must not run beside its remains.
bool HasEndedWithoutResult(const JobStatusInfo& job) {
    const bool hasEnded =
        job.status == JobStatus::Failed || job.status == JobStatus::Canceled || job.status == JobStatus::Queued;
    return hasEnded && !platform::Exists(PathFuncs::Join(job.workDir, run_protocol::resultFileName));
}

/// `runs`: the value that identifies each job in the environment of its processes.
void EndProcesses(const std::set<std::wstring>& runs) {
    if (const std::size_t count = platform::KillProcessesByEnvironment(run_protocol::runInfoVariable, runs);
        count > 0) {
        ControllerLogManager::WarnLog(L"Processes of scenarios that had lost their runner were ended: " +
                                      std::to_wstring(count));
    }
}

} // namespace

void StopOrphanCleanup(const std::wstring& jobListFile) {
    std::vector<JobListInfo> jobs;
    // The engine reports a list that cannot be read; it contains no jobs.
    (void)ControllerCSWrapper::ParseJobList(jobListFile, jobs);
    std::set<std::wstring> runs;
    for (const JobListInfo& job : jobs) {
        RequestStop(job);
        // A job is still listed as queued between the start of its process and the next write of the list.
        if (IsActive(job.status) || job.status == JobStatus::Queued) {
            runs.insert(run_protocol::RunInfoPath(job.workDir));
        }
    }
    EndProcesses(runs);
}

void EndLostRuns(const FunctionManager& functions) {
    constexpr auto endLostRuns = "EndLostRuns";
    std::wstring answer;
    if (functions.HasFunction(endLostRuns) &&
        CallModule(functions, endLostRuns, L"", answer, nullptr, "ended the jobs of earlier hosts") != 0) {
        ControllerLogManager::WarnLog(L"The function module could not end the jobs of earlier hosts. " + answer);
    }
}

void KillOrphans(const std::vector<JobStatusInfo>& jobs) {
    std::set<std::wstring> runs;
    for (const JobStatusInfo& job : jobs) {
        if (HasEndedWithoutResult(job)) {
            runs.insert(run_protocol::RunInfoPath(job.workDir));
        }
    }
    EndProcesses(runs);
}
