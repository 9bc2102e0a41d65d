#include "CommonControllerLib/JobEntry.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/system/OwnedHandle.h"
#include "text/Numbers.h"

#include <utility>

namespace {

/// Returns the log text for the end of a job; null for a status that is not final.
const wchar_t* EndOfJob(JobStatus status) {
    switch (status) {
    case JobStatus::Success:
        return L" is finished.";
    case JobStatus::Failed:
        return L" is failed.";
    case JobStatus::Dequeued:
    case JobStatus::Canceled:
        return L" is canceled.";
    case JobStatus::Queued:
    case JobStatus::Running:
    case JobStatus::Canceling:
        break;
    }
    return nullptr;
}

} // namespace

JobEntry::JobEntry() : info() {}

JobEntry::JobEntry(const JobListInfo& record) : info(record) {}

JobEntry::~JobEntry() {
    platform::CloseProcessHandle(processHandle);
}

void JobEntry::CloseProcessHandle() {
    platform::CloseProcessHandle(std::exchange(processHandle, nullptr));
}

std::string JobEntry::GetStatusString() {
    return JobStatusString(info.status);
}

JobStatusInfo JobEntry::GetJobStatusInfo() {
    return {info.id, info.progress, info.status, info.outputDir, info.workDir, info.startTime, info.endTime};
}

void JobEntry::SetScenarioDir(const std::wstring& dir, const std::wstring& subDir) {
    scenarioDir = dir;
    scenarioSubDir = subDir;
}

bool JobEntry::CreateJsonString(std::wstring& json) {
    return ControllerCSWrapper::CreateRunScenarioInfoString(info.id, info.scenario.path, info.inputFiles, outputFolder,
                                                            info.workDir, info.runArgument, json);
}

bool JobEntry::OnEvaluateJobInputResult(const std::wstring& response) {
    void* handle = nullptr;
    if (!ControllerCSWrapper::Deserialize(response, handle)) {
        return false;
    }
    SetProcessHandle(handle);
    return true;
}

void JobEntry::ChangeStatus(JobStatus status) {
    if (status == info.status) {
        return;
    }
    info.status = status;
    if (const wchar_t* const end = EndOfJob(status)) {
        ControllerLogManager::Log(L"Job: " + numbers::DecimalText(info.seqId) + end);
    } else {
        ControllerLogManager::DebugLog("Job: " + std::to_string(info.seqId) + " is " + GetStatusString());
    }
}
