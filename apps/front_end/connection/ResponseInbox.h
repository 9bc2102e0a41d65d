#pragma once

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/ControllerPresenterAbs.h"
#include "formats/Scheduling.h"
#include "platform/processes/Waiting.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace front_end {

/// The latest answer of each kind; empty if it has not arrived or was taken.
struct Answers {
    std::optional<JobEnqueueResult> enqueued;
    std::optional<std::vector<JobStatusInfo>> cancelled;
    std::optional<std::vector<ScenarioInfo>> scenarios;
    std::optional<std::vector<ScenarioParameterSetInfo>> parameterSets;
    std::optional<std::vector<ListedJob>> jobs;
    std::optional<std::vector<std::wstring>> deleted;
    std::optional<std::vector<JobStatusInfo>> edited;
    std::optional<QueueState> queueState;
    std::optional<std::wstring> strings;
    std::optional<std::wstring> culture;
    std::optional<std::vector<JobStatusInfo>> statuses;
    std::optional<bool> terminated;
    /// Why the host rejected a request.
    std::optional<std::wstring> refusal;
    /// The problems of the scenarios.
    std::optional<std::vector<std::wstring>> scenarioProblems;
};

/// Receives the host's answers on the transmitter's thread and keeps them until the command's thread takes them.
class ResponseInbox final : public ControllerPresenterAbs {
public:
    /// Signalled if a message has arrived since `Clear`.
    void* Readable() const { return arrived.Handle(); }
    void Clear() { arrived.Clear(); }

    /// Removes and returns an answer, if it has arrived.
    template <typename Answer>
    std::optional<Answer> Take(std::optional<Answer> Answers::*answer) {
        const std::lock_guard lock(mutex);
        return std::exchange(answers.*answer, std::nullopt);
    }

    /// Removes and returns the job changes since the last call and since the last list with the job: the latest change
    /// of each job, in the order of the jobs' first changes. The end of a job is kept even if the job is then deleted,
    /// and precedes the deletion.
    std::vector<JobStatusInfo> TakeUpdates();

    /// Handle events for which the presenter interface has no operation, or one with less content.
    void AddHandlers(EventTransmitter& transmitter);
    void RemoveHandlers(EventTransmitter& transmitter);

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

    // Answers to requests that no command sends; unused.
    bool FetchServiceListResponse(const std::vector<ServiceInfo>& services) override;
    bool FetchUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool WriteUserSettingsResponse() override;
    bool ClearUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool ShowSettingDialogResponse() override;
    bool FetchScenarioEditorPathResponse(const std::wstring& path) override;
    bool FetchPreviousStateFilePathResponse(const std::wstring& path) override;
    bool FetchThirdPartyNoticesPathResponse(const std::wstring& path) override;

private:
    /// Stores the content of one event.
    template <typename Answer>
    class Keeper final : public CallbackFunctor {
    public:
        Keeper(ResponseInbox& owner, std::optional<Answer> Answers::*keptAt) : inbox(owner), place(keptAt) {}
        bool operator()(const std::wstring& payload) override;

    private:
        ResponseInbox& inbox;
        std::optional<Answer> Answers::*place;
    };

    /// Stores the job list, or a part of it. Earlier updates of the jobs in it are older than the list.
    class ListKeeper final : public CallbackFunctor {
    public:
        ListKeeper(ResponseInbox& owner, bool keepsWholeList) : inbox(owner), isWhole(keepsWholeList) {}
        bool operator()(const std::wstring& payload) override;

    private:
        ResponseInbox& inbox;
        bool isWhole;
    };

    template <typename Answer>
    bool Keep(std::optional<Answer> Answers::*place, const Answer& answer);
    bool KeepList(std::vector<ListedJob> jobs, bool isWhole);
    void DropUpdatesOf(const std::vector<ListedJob>& jobs);

    std::mutex mutex;
    Answers answers;
    std::vector<JobStatusInfo> updates;
    std::map<std::wstring, std::size_t> updateOfJob;
    platform::Event arrived;
    Keeper<std::wstring> refusalHandler{*this, &Answers::refusal};
    Keeper<std::vector<std::wstring>> scenarioProblemsHandler{*this, &Answers::scenarioProblems};
    Keeper<std::vector<JobStatusInfo>> editedHandler{*this, &Answers::edited};
    Keeper<QueueState> queueStateHandler{*this, &Answers::queueState};
    ListKeeper listHandler{*this, true};
    ListKeeper partHandler{*this, false};
};

} // namespace front_end
