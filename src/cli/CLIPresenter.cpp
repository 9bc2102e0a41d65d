#include "cli/CLIPresenter.h"

#include "cli/CLIOrvelProxy.h"
#include "cli/ResponseFlags.h"
#include "cli/TextOutput.h"
#include "companion/ControllerCSWrapper.h"
#include "modules/EventTransmitterManager.h"
#include "platform/Sleep.h"
#include "support/ControllerLogManager.h"
#include "support/Numbers.h"

#include <chrono>

namespace {

std::string EnqueuedLines(const std::vector<int>& seqIds) {
    std::string lines;
    for (const int seqId : seqIds) {
        lines += CLIPresenter::CreateStatusString(seqId, seqId < 0 ? JobStatus::Failed : JobStatus::Queued);
    }
    return lines;
}

} // namespace

CLIPresenter::CLIPresenter(const std::wstring& transmitterId, const std::wstring& modulePath) {
    EventTransmitter* const transmitter = EventTransmitterManager(modulePath).GetEventTransmitter(transmitterId);
    SetEventTransmitter(transmitter);
    proxy = std::make_unique<CLIOrvelProxy>(transmitter);
}

CLIPresenter::~CLIPresenter() = default;

void CLIPresenter::EnqueueJobsFromFile(const std::wstring& jobFile, const std::wstring& outputFile) {
    ControllerLogManager::DebugLog(L"Reading job list file: \"" + jobFile + L"\".");
    std::vector<EnqueueJobsInfo> infos;
    if (!ControllerCSWrapper::ReadEnqueueJobsFile(jobFile, infos)) {
        ControllerLogManager::ErrorLog(L"Failed to read the job list file.");
        return;
    }
    ControllerLogManager::DebugLog(L"Succeeded to read the job list file.");
    TextOutput output(outputFile);
    for (EnqueueJobsInfo& info : infos) {
        output.Write(EnqueuedLines(SendEnqueueRequest(info)));
    }
}

/// The numbers of the request's jobs, -1 for a refused one; a single -1 when no answer came.
std::vector<int> CLIPresenter::SendEnqueueRequest(EnqueueJobsInfo& info) {
    info.requestId = ControllerCSWrapper::CreateGuid();
    // Whether it could be sent shows in the answer.
    (void)proxy->EnqueueJobs(info);
    std::vector<int> seqIds;
    if (!WaitForEnqueuedJobs(info.requestId, seqIds)) {
        ControllerLogManager::ErrorLog(L"Failed to EnqueueJobs");
        seqIds = {-1};
    }
    return seqIds;
}

bool CLIPresenter::WaitForEnqueuedJobs(const std::wstring& requestId, std::vector<int>& seqIds) {
    constexpr std::chrono::milliseconds interval(10);
    constexpr int waits = 20;
    bool isFound = FindAndEraseEnqueueJobsId(requestId, seqIds);
    for (int wait = 0; wait < waits && !isFound; ++wait) {
        platform::SleepFor(interval);
        isFound = FindAndEraseEnqueueJobsId(requestId, seqIds);
    }
    return isFound;
}

void CLIPresenter::CancelJobs(const std::wstring& id) const {
    ControllerLogManager::Log(L"Job: " + id + L" is canceling.");
    std::vector<std::wstring> ids = {id};
    // Nothing is waited for here: the caller sees the answer, or that none comes.
    (void)proxy->CancelJobs(ids);
}

void CLIPresenter::CancelAllJobs() const {
    ControllerLogManager::Log(L"Canceling all jobs.");
    (void)proxy->CancelAllJobs();
}

void CLIPresenter::CheckJobStatus(const std::vector<std::wstring>& ids, const std::wstring& outputFile) {
    response_flags::responseStarted = false;
    response_flags::responseFinished = false;
    // Without an answer the jobs are of unknown status.
    (void)proxy->CheckJobStatusRequest(ids);
    WaitForResponse();
    TextOutput output(outputFile);
    std::string lines;
    for (const std::wstring& id : ids) {
        const int seqId = numbers::ReadInteger(id);
        const JobStatus status = FindStatus(seqId);
        lines += CreateStatusString(seqId, status);
        ControllerLogManager::Log("Status of Job:" + std::to_string(seqId) + " is " + JobStatusString(status));
    }
    output.Write(lines);
}

std::string CLIPresenter::CreateStatusString(int seqId, JobStatus status) {
    return std::to_string(seqId) + "," + JobStatusString(status) + "\n";
}
