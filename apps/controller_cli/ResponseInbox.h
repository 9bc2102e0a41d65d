#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/ControllerPresenterAbs.h"
#include "platform/processes/Waiting.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace controller_cli {

/// The latest answer of each kind. One that is not there has not come yet, or was taken.
struct Answers {
    std::optional<JobEnqueueResult> enqueued;
    std::optional<std::vector<JobStatusInfo>> cancelled;
    std::optional<std::vector<ScenarioInfo>> scenarios;
    std::optional<std::vector<ScenarioParameterSetInfo>> parameterSets;
    std::optional<std::vector<JobListInfo>> jobs;
    std::optional<std::vector<std::wstring>> deleted;
    std::optional<std::wstring> strings;
    std::optional<std::wstring> culture;
    std::optional<std::vector<JobStatusInfo>> statuses;
    std::optional<bool> terminated;
    /// Why the host does not serve a request.
    std::optional<std::wstring> refusal;
    /// What is broken among the scenarios.
    std::optional<std::vector<std::wstring>> scenarioProblems;
};

/// Keeps what the host answers, on the transmitter's thread, until the command takes it on its own.
class ResponseInbox final : public ControllerPresenterAbs {
public:
    /// Signalled when something has come since `Clear`.
    void* Arrived() const { return arrived.Handle(); }
    void Clear() { arrived.Clear(); }

    /// Takes an answer out, if it has come.
    template <typename Answer>
    std::optional<Answer> Take(std::optional<Answer> Answers::*answer) {
        const std::lock_guard lock(mutex);
        return std::exchange(answers.*answer, std::nullopt);
    }

    /// Takes the changes of jobs that were told since the last time, and since the last job list: of each job the
    /// latest, in the order in which the jobs were first told of. The deletion of a job does not hide how it ended:
    /// that comes before it.
    std::vector<JobStatusInfo> TakeUpdates();

    /// Take the host's "RequestRefused" and "ScenarioProblems", which have no operation among a presenter's.
    CallbackFunctor& RefusalHandler() { return refusalHandler; }
    CallbackFunctor& ScenarioProblemsHandler() { return scenarioProblemsHandler; }

    bool EnqueueJobsFinish(const JobEnqueueResult& result) override;
    bool UpdateProgress(const std::vector<JobStatusInfo>& infos) override;
    bool CancelJobsFinish(const std::vector<JobStatusInfo>& infos) override;
    bool FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) override;
    bool FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& parameterSets) override;
    bool InitJobsResponse(const std::vector<JobListInfo>& jobs) override;
    bool DeleteJobsResponse(const std::vector<std::wstring>& jobIds) override;
    bool FetchLocalizedStringsResponse(const std::wstring& strings) override;
    bool InitCultureResponse(const std::wstring& culture) override;
    bool TerminateResponse() override;
    bool CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) override;

    // Answers to requests that no command sends: not used.
    bool FetchServiceListResponse(const std::vector<ServiceInfo>& services) override;
    bool FetchUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool WriteUserSettingsResponse() override;
    bool ClearUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool ShowSettingDialogResponse() override;
    bool FetchScenarioEditorPathResponse(const std::wstring& path) override;
    bool FetchPreviousStateFilePathResponse(const std::wstring& path) override;
    bool FetchThirdPartyNoticesPathResponse(const std::wstring& path) override;

private:
    /// Keeps the content of one event.
    template <typename Answer>
    class Keeper final : public CallbackFunctor {
    public:
        Keeper(ResponseInbox& owner, std::optional<Answer> Answers::*keptAt) : inbox(owner), place(keptAt) {}
        bool operator()(const std::wstring& payload) override;

    private:
        ResponseInbox& inbox;
        std::optional<Answer> Answers::*place;
    };

    template <typename Answer>
    bool Keep(std::optional<Answer> Answers::*place, const Answer& answer);

    std::mutex mutex;
    Answers answers;
    std::vector<JobStatusInfo> updates;
    std::map<std::wstring, std::size_t> updateOfJob;
    platform::Event arrived;
    Keeper<std::wstring> refusalHandler{*this, &Answers::refusal};
    Keeper<std::vector<std::wstring>> scenarioProblemsHandler{*this, &Answers::scenarioProblems};
};

} // namespace controller_cli
