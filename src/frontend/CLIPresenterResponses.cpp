#include "CommonControllerLib/CLIOrvelProxy.h"
#include "CommonControllerLib/CLIPresenter.h"
#include "CommonControllerLib/ControllerLogManager.h"
#include "formats/JobStates.h"
#include "frontend/ResponseFlags.h"
#include "text/Numbers.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace {

/// Guards the answers of all presenters: an answer may arrive while a command stops waiting for it, or later.
std::mutex answersMutex;

void MarkResponseStarted() {
    response_flags::responseStarted = true;
    response_flags::responseFinished = false;
}

void MarkResponseFinished() {
    response_flags::responseStarted = true;
    response_flags::responseFinished = true;
}

} // namespace

bool CLIPresenter::EnqueueJobsFinish(const JobEnqueueResult& result) {
    MarkResponseStarted();
    bool isFirst = true;
    for (const JobIdInfo& job : result.jobIds) {
        seqIdById[job.id] = job.seqId;
        // Creating the same entry for every job takes minutes for 100,000 jobs.
        if (std::exchange(isFirst, false)) {
            AddEnqueueJobsId(result.requestId, result.jobIds);
        }
        ControllerLogManager::Log(L"Job: " + numbers::DecimalText(job.seqId) + L" is added.");
    }
    MarkResponseFinished();
    return true;
}

void CLIPresenter::AddEnqueueJobsId(const std::wstring& requestId, const std::vector<JobIdInfo>& jobIds) {
    const std::lock_guard lock(answersMutex);
    std::vector<std::int32_t> seqIds(jobIds.size());
    std::transform(jobIds.begin(), jobIds.end(), seqIds.begin(),
                   [](const JobIdInfo& job) { return job.id.empty() ? -1 : job.seqId; });
    enqueueResults[requestId] = std::move(seqIds);
}

bool CLIPresenter::FindAndEraseEnqueueJobsId(const std::wstring& requestId, std::vector<int>& seqIds) {
    const std::lock_guard lock(answersMutex);
    const auto found = enqueueResults.find(requestId);
    if (found == enqueueResults.end()) {
        return false;
    }
    seqIds = found->second;
    return true;
}

bool CLIPresenter::CancelJobsFinish(const std::vector<JobStatusInfo>& infos) {
    for (const JobStatusInfo& info : infos) {
        ControllerLogManager::DebugLog(L"JobID: " + info.id + L" is canceled.");
    }
    return UpdateProgress(infos);
}

bool CLIPresenter::CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) {
    MarkResponseStarted();
    {
        const std::lock_guard lock(answersMutex);
        for (const JobStatusInfo& info : infos) {
            statusBySeqId[numbers::ReadInteger(info.id)] = info;
        }
    }
    MarkResponseFinished();
    return true;
}

JobStatus CLIPresenter::FindStatus(int seqId) const {
    const std::lock_guard lock(answersMutex);
    const auto found = statusBySeqId.find(seqId);
    return found == statusBySeqId.end() ? unlistedStatus : found->second.status;
}

bool CLIPresenter::FindJobId(int seqId, std::wstring& id) const {
    const std::lock_guard lock(answersMutex);
    const auto found = statusBySeqId.find(seqId);
    if (found == statusBySeqId.end()) {
        return false;
    }
    id = found->second.id;
    return true;
}

bool CLIPresenter::UpdateProgress(const std::vector<JobStatusInfo>& /*infos*/) {
    return true;
}

bool CLIPresenter::FetchScenariosResponse(const std::vector<ScenarioInfo>& /*scenarios*/) {
    return true;
}

bool CLIPresenter::FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& /*parameterSets*/) {
    return true;
}

bool CLIPresenter::InitJobsResponse(const std::vector<JobListInfo>& /*jobs*/) {
    return true;
}

bool CLIPresenter::DeleteJobsResponse(const std::vector<std::wstring>& /*jobIds*/) {
    return true;
}

bool CLIPresenter::FetchLocalizedStringsResponse(const std::wstring& /*strings*/) {
    return true;
}

bool CLIPresenter::InitCultureResponse(const std::wstring& /*culture*/) {
    return true;
}

bool CLIPresenter::TerminateResponse() {
    return true;
}

bool CLIPresenter::FetchServiceListResponse(const std::vector<ServiceInfo>& /*services*/) {
    return true;
}

bool CLIPresenter::FetchUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return true;
}

bool CLIPresenter::WriteUserSettingsResponse() {
    return true;
}

bool CLIPresenter::ClearUserSettingsResponse(const UserSettingsInfo& /*settings*/) {
    return true;
}

bool CLIPresenter::ShowSettingDialogResponse() {
    return true;
}

bool CLIPresenter::FetchScenarioEditorPathResponse(const std::wstring& /*path*/) {
    return true;
}

bool CLIPresenter::FetchPreviousStateFilePathResponse(const std::wstring& /*path*/) {
    return true;
}

bool CLIPresenter::FetchThirdPartyNoticesPathResponse(const std::wstring& /*path*/) {
    return true;
}
