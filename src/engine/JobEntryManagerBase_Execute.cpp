#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/ModuleCall.h"
#include "engine/Queue.h"
#include "fault_points/FaultPoint.h"
#include "platform/system/Clock.h"
#include "text/Numbers.h"

namespace {

constexpr const char* runScenario = "RunScenario";
/// The maximum length of a module's answer that is kept as a reason. Units: elements of the wide text.
constexpr std::size_t longestReason = 2000;

std::wstring WhyModuleRefused(const FunctionManager& modules, long result, const std::wstring& response) {
    if (!modules.HasFunction(runScenario)) {
        return L"No function module offers \"RunScenario\".";
    }
    return L"The function module did not start the job (result " + std::to_wstring(result) + L")" +
           (response.empty() ? L"." : L": " + response.substr(0, longestReason));
}

bool BuildRunRequest(const JobEntry& job, std::wstring& request) {
    const JobListInfo& info = job.GetJobListInfo();
    if (ControllerCSWrapper::CreateRunScenarioInfoString(info.id, info.scenario.path, info.inputFiles,
                                                         job.GetOutputFolder(), info.workDir, info.runArgument,
                                                         request)) {
        return true;
    }
    ControllerLogManager::ErrorLog(L"Failed to create request json of Job: " + numbers::DecimalText(info.seqId));
    return false;
}

} // namespace

bool JobEntryManagerBase::ExecuteJob(Callback callback, std::vector<JobStatusInfo>& updated) {
    const std::lock_guard lock(mutex);
    SelectNextJob();
    if (nextJob == jobList.end() || IsSuspendJobExecution()) {
        return false;
    }
    JobListChange change;
    bool isRunning = false;
    while (nextJob != jobList.end() && !isRunning) {
        if (queue::CanStart((*nextJob)->GetStatus())) {
            change.jobs.push_back(*nextJob);
            isRunning = StartJob(**nextJob, callback, updated);
        }
        if (!isRunning) {
            ++nextJob;
            SelectNextJob();
        }
    }
    UpdateJobList(change);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::StartListed);
    return true;
}

bool JobEntryManagerBase::IsSuspendJobExecution() {
    return IsActive((*nextJob)->GetStatus());
}

void JobEntryManagerBase::SelectNextJob() {}

bool JobEntryManagerBase::StartJob(JobEntry& job, Callback callback, std::vector<JobStatusInfo>& updated) {
    job.ChangeStatus(JobStatus::Running);
    job.SetStartTime(platform::Now());
    const bool isRunning = job.PrepareOutputDir() && CallRunScenario(job, callback);
    if (!isRunning) {
        job.ChangeStatus(JobStatus::Failed);
        job.SetEndTime(platform::Now());
    }
    updated.push_back(job.GetJobStatusInfo());
    return isRunning;
}

bool JobEntryManagerBase::CallRunScenario(JobEntry& job, Callback callback) {
    std::wstring request;
    if (!BuildRunRequest(job, request)) {
        job.SetFailure(L"The run request of the job cannot be built.");
        return false;
    }
    ControllerLogManager::DebugLog(L"Job: " + numbers::DecimalText(job.GetSeqId()) + L" is running as JobID: " +
                                   job.GetId());
    std::wstring response;
    const std::string activity = "started Job: " + std::to_string(job.GetSeqId());
    fault_points::ReachFaultPoint(fault_points::FaultPoint::StartDecided);
    const long result = CallModule(*functionManager, runScenario, request, response, callback, activity);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::ModuleCalled);
    if (result != 0) {
        job.SetFailure(WhyModuleRefused(*functionManager, result, response));
        return false;
    }
    // An answer without a handle leaves the job running without a process: the next check treats it as ended.
    if (!job.OnEvaluateJobInputResult(response)) {
        job.SetFailure(L"The answer of the function module names no process that can be watched: " +
                       response.substr(0, longestReason));
    }
    return true;
}
