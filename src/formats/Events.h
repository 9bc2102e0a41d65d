#pragma once

#include <string>
#include <vector>

#include "CommonControllerLib/JobRecords.h"
#include "formats/Scheduling.h"

/// All events between front ends and the host: each with its name and the type of its content. `messages::Serialize`
/// and `messages::Deserialize` (formats/Messages.h) write and read them.
namespace events {

/// The content is JSON null.
struct Nothing {};

/// Job ids or, in requests, ids or job numbers.
using JobNames = std::vector<std::wstring>;

template <typename ContentType>
struct Event {
    using Content = ContentType;
    const wchar_t* name;
};

// Requests: from a front end to the host.
inline constexpr Event<ScheduledRequest> enqueueJobs{L"EnqueueJobs"};
inline constexpr Event<JobNames> cancelJobs{L"CancelJobs"};
inline constexpr Event<Nothing> cancelAllJobs{L"CancelAllJobs"};
inline constexpr Event<JobNames> checkJobStatusRequest{L"CheckJobStatusRequest"};
inline constexpr Event<Nothing> fetchScenariosRequest{L"FetchScenariosRequest"};
inline constexpr Event<std::wstring> fetchScenarioParameterSetsRequest{L"FetchScenarioParameterSetsRequest"};
inline constexpr Event<Nothing> initJobsRequest{L"InitJobsRequest"};
inline constexpr Event<JobNames> deleteJobsRequest{L"DeleteJobsRequest"};
inline constexpr Event<std::wstring> fetchLocalizedStringsRequest{L"FetchLocalizedStringsRequest"};
inline constexpr Event<Nothing> initCultureRequest{L"InitCultureRequest"};
inline constexpr Event<JobsEdit> editJobsRequest{L"EditJobsRequest"};
inline constexpr Event<QueueState> setQueueStateRequest{L"SetQueueStateRequest"};
inline constexpr Event<Nothing> fetchQueueStateRequest{L"FetchQueueStateRequest"};
inline constexpr Event<JobsQuery> fetchJobsRequest{L"FetchJobsRequest"};
inline constexpr Event<Nothing> terminateRequest{L"TerminateRequest"};

// Requests that need a host with dialogs.
inline constexpr Event<Nothing> fetchServiceListRequest{L"FetchServiceListRequest"};
inline constexpr Event<Nothing> fetchUserSettingsRequest{L"FetchUserSettingsRequest"};
inline constexpr Event<Nothing> writeUserSettingsRequest{L"WriteUserSettingsRequest"};
inline constexpr Event<Nothing> clearUserSettingsRequest{L"ClearUserSettingsRequest"};
inline constexpr Event<Nothing> showSettingDialogRequest{L"ShowSettingDialogRequest"};
inline constexpr Event<Nothing> fetchScenarioEditorPathRequest{L"FetchScenarioEditorPathRequest"};
inline constexpr Event<Nothing> fetchPreviousStateFilePathRequest{L"FetchPreviousStateFilePathRequest"};
inline constexpr Event<Nothing> fetchThirdPartyNoticesPathRequest{L"FetchThirdPartyNoticesPathRequest"};

// Answers: from the host to the front end that sent the request.
inline constexpr Event<JobEnqueueResult> enqueueJobsFinish{L"EnqueueJobsFinish"};
inline constexpr Event<std::vector<JobStatusInfo>> cancelJobsFinish{L"CancelJobsFinish"};
inline constexpr Event<std::vector<JobStatusInfo>> checkJobStatusResponse{L"CheckJobStatusResponse"};
inline constexpr Event<std::vector<ScenarioInfo>> fetchScenariosResponse{L"FetchScenariosResponse"};
inline constexpr Event<std::vector<ScenarioParameterSetInfo>> fetchScenarioParameterSetsResponse{
    L"FetchScenarioParameterSetsResponse"};
inline constexpr Event<std::vector<ListedJob>> initJobsResponse{L"InitJobsResponse"};
inline constexpr Event<JobNames> deleteJobsResponse{L"DeleteJobsResponse"};
inline constexpr Event<std::wstring> fetchLocalizedStringsResponse{L"FetchLocalizedStringsResponse"};
inline constexpr Event<std::wstring> initCultureResponse{L"InitCultureResponse"};
/// The edited jobs; those that do not wait any longer are missing.
inline constexpr Event<std::vector<JobStatusInfo>> editJobsFinish{L"EditJobsFinish"};
/// Answers both requests for the state of the queue.
inline constexpr Event<QueueState> queueStateResponse{L"QueueStateResponse"};
/// The rows that the request names, in list order; names of unlisted jobs have none.
inline constexpr Event<std::vector<ListedJob>> fetchJobsResponse{L"FetchJobsResponse"};
inline constexpr Event<Nothing> terminateResponse{L"TerminateResponse"};
/// The reason why a request was rejected.
inline constexpr Event<std::wstring> requestRefused{L"RequestRefused"};
/// Errors in scenarios; sent before the answer to the request for the scenarios.
inline constexpr Event<std::vector<std::wstring>> scenarioProblems{L"ScenarioProblems"};

// Broadcasts: from the host to every front end.
inline constexpr Event<std::vector<JobStatusInfo>> updateProgress{L"UpdateProgress"};

} // namespace events
