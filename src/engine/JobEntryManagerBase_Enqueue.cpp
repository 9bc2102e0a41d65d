#include "CommonControllerLib/JobEntryManagerBase.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "fault_points/FaultPoint.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"
#include "support/PathPieces.h"
#include "text/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

void LogNotFound(const std::wstring& what, const std::wstring& name) {
    ControllerLogManager::ErrorLog(what + L": " + name + L" is not found");
}

void PrepareResult(const EnqueueJobsInfo& request, JobEnqueueResult& result) {
    result.requestId = request.requestId;
    result.jobIds.resize(request.inputFileSets.size());
    result.inputSetResults.resize(request.inputFileSets.size());
}

/// Copies the values that all jobs of a request have in common, except the scenario.
void CopyRequest(const EnqueueJobsInfo& request, JobListInfo& record) {
    record.runArgument = request.runArgument;
    record.extraText = request.extraText;
    record.outputDir = request.useTimeStampFolder
                           ? PathFuncs::Join(request.outputDir, platform::LocalStamp(platform::Now()))
                           : request.outputDir;
}

bool CanRun(const EnqueueJobsInfo& request, const JobListInfo& record) {
    if (!platform::Exists(record.scenario.path)) {
        LogNotFound(L"Scenario", record.scenario.path);
        return false;
    }
    if (request.outputDir.empty()) {
        ControllerLogManager::ErrorLog(L"OutputDir: Path is not set");
        return false;
    }
    return true;
}

/// Returns true if an input set is not empty and all its files exist. Logs a missing file, but not an empty set.
bool IsUsable(const std::vector<std::wstring>& inputFiles) {
    const auto missing = std::find_if_not(inputFiles.begin(), inputFiles.end(), platform::Exists);
    if (missing != inputFiles.end()) {
        LogNotFound(L"Input", *missing);
        return false;
    }
    return !inputFiles.empty();
}

/// Logs one line per input set; a rejected one is logged with the number 0.
void LogAdded(const std::vector<JobIdInfo>& jobIds) {
    for (const JobIdInfo& job : jobIds) {
        ControllerLogManager::Log(L"Job: " + numbers::DecimalText(job.seqId) + L" is added");
    }
}

} // namespace

bool JobEntryManagerBase::EnqueueJob(EnqueueJobsInfo& request, JobEnqueueResult& result) {
    const std::lock_guard lock(mutex);
    PrepareResult(request, result);
    JobListInfo record{};
    std::wstring scenarioDir = scenarioDirectories.empty() ? L"" : scenarioDirectories.front().path;
    if (!ResolveScenario(request.scenario, record.scenario, scenarioDir)) {
        return false;
    }
    CopyRequest(request, record);
    workDirectory = ControllerCSWrapper::GetWorkDirectory();
    if (!CanRun(request, record)) {
        return false;
    }
    JobListChange change;
    AppendJobs(request, record, scenarioDir, result, change);
    LogAdded(result.jobIds);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JobsAppended);
    UpdateJobList(change);
    fault_points::ReachFaultPoint(fault_points::FaultPoint::JobsListed);
    return true;
}

bool JobEntryManagerBase::ResolveScenario(const ScenarioInfo& requested, ScenarioInfo& scenario,
                                          std::wstring& scenarioDir) {
    const auto catalogued = scenarioMap.find(requested.id);
    if (catalogued != scenarioMap.end()) {
        scenario = catalogued->second;
        return true;
    }
    scenario = requested;
    std::wstring file;
    if (!FindSceanrioFile(requested.id, file)) {
        LogNotFound(L"Scenario", requested.id);
        return false;
    }
    const PathPieces pieces = SplitPath(file);
    scenarioDir = pieces.drive + pieces.directory;
    scenario.relativePath = pieces.name + pieces.extension;
    scenario.path = file;
    scenario.displayName = pieces.name;
    return true;
}

bool JobEntryManagerBase::FindSceanrioFile(const std::wstring& scenario, std::wstring& path) {
    if (platform::Exists(scenario)) {
        path = scenario;
        return true;
    }
    for (const ScenarioDirectory& directory : scenarioDirectories) {
        const std::wstring candidate = PathFuncs::Join(directory.path, scenario);
        if (platform::Exists(candidate)) {
            path = candidate;
            return true;
        }
    }
    return false;
}

void JobEntryManagerBase::AppendJobs(const EnqueueJobsInfo& request, JobListInfo& record,
                                     const std::wstring& scenarioDir, JobEnqueueResult& result, JobListChange& change) {
    std::random_device device; // shared by all jobs: on some systems creating one is slower than drawing from it
    for (std::size_t i = 0; i < request.inputFileSets.size(); ++i) {
        if (IsUsable(request.inputFileSets[i])) {
            record.inputFiles = request.inputFileSets[i];
            IdentifyJob(record, device);
            result.jobIds[i] = {record.id, record.seqId};
            change.jobs.push_back(AppendJob(record, scenarioDir));
        }
    }
}

void JobEntryManagerBase::IdentifyJob(JobListInfo& record, std::random_device& device) {
    record.id = CreateUniqueId(device);
    record.seqId = CreateSequentialId();
    record.workDir = PathFuncs::Join(workDirectory, record.id);
}

const std::shared_ptr<JobEntry>& JobEntryManagerBase::AppendJob(const JobListInfo& record,
                                                                const std::wstring& scenarioDir) {
    const std::shared_ptr<JobEntry> job(CreateNewJobEntry(&record));
    job->SetScenarioDir(scenarioDir, L"");
    jobList.push_back(job);
    if (nextJob == jobList.end()) {
        nextJob = std::prev(jobList.end());
    }
    return jobList.back();
}
