#include "CommonControllerLib/CLIPresenter.h"

#include "CommonControllerLib/CLIOrvelProxy.h"
#include "CommonControllerLib/ControllerLogManager.h"
#include "CommonControllerLib/EventTransmitterManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "frontend/ResponseFlags.h"
#include "frontend/TextOutput.h"
#include "platform/system/Sleep.h"
#include "text/Numbers.h"

#include <chrono>

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
    TextOutput output;
    // Required by the published interface: an output file that cannot be opened is not reported
    // (CLIPresenterTest.AnOutputFileThatCannotBeOpenedLosesItsLinesSilently).
    (void)output.Open(outputFile);
    for (EnqueueJobsInfo& info : infos) {
        std::vector<int> seqIds;
        (void)EnqueueJobs(info, seqIds);
        (void)output.Write(CreateEnqueuedLines(seqIds));
    }
}

bool CLIPresenter::EnqueueJobs(EnqueueJobsInfo& request, std::vector<int>& seqIds) {
    // A request that could not be sent is detected by the missing answer.
    return EnqueueJobs(request, seqIds, [&] { (void)proxy->EnqueueJobs(request); });
}

bool CLIPresenter::EnqueueJobs(EnqueueJobsInfo& request, std::vector<int>& seqIds, const std::function<void()>& send) {
    request.requestId = ControllerCSWrapper::CreateGuid();
    send();
    const bool isAnswered = WaitForEnqueuedJobs(request.requestId, seqIds);
    if (!isAnswered) {
        ControllerLogManager::ErrorLog(L"Failed to EnqueueJobs");
        seqIds = {-1};
    }
    return isAnswered;
}

std::string CLIPresenter::CreateEnqueuedLines(const std::vector<int>& seqIds) {
    std::string lines;
    for (const int seqId : seqIds) {
        lines += CreateStatusString(seqId, seqId < 0 ? JobStatus::Failed : JobStatus::Queued);
    }
    return lines;
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
    // Does not wait: the answer is logged when it arrives.
    (void)proxy->CancelJobs(ids);
}

void CLIPresenter::CancelAllJobs() const {
    ControllerLogManager::Log(L"Canceling all jobs.");
    (void)proxy->CancelAllJobs();
}

void CLIPresenter::CheckJobStatus(const std::vector<std::wstring>& ids, const std::wstring& outputFile) {
    std::string lines;
    (void)FetchStatusLines(ids, lines);
    TextOutput output;
    (void)output.Open(outputFile);
    (void)output.Write(lines);
}

bool CLIPresenter::FetchStatusLines(const std::vector<std::wstring>& ids, std::string& lines) {
    response_flags::responseStarted = false;
    response_flags::responseFinished = false;
    // Without an answer the status of the jobs is unknown.
    (void)proxy->CheckJobStatusRequest(ids);
    WaitForResponse();
    const bool isAnswered = response_flags::responseFinished;
    lines.clear();
    for (const std::wstring& id : ids) {
        const int seqId = numbers::ReadInteger(id);
        const JobStatus status = FindStatus(seqId);
        lines += CreateStatusString(seqId, status);
        ControllerLogManager::Log("Status of Job:" + std::to_string(seqId) + " is " + JobStatusString(status));
    }
    return isAnswered;
}

std::string CLIPresenter::CreateStatusString(int seqId, JobStatus status) {
    return std::to_string(seqId) + "," + JobStatusString(status) + "\n";
}
