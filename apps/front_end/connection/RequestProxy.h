#pragma once

#include "CommonControllerLib/IVanteloOrvelAbs.h"
#include "formats/Events.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace front_end {

/// Sends every request of a front end, each under its own name. Each function returns true if the request was queued.
/// The caller waits for the answer itself, without a limit of the transmitter. Only a transmitter without extension may
/// block until the request is handled.
class RequestProxy final : public IVanteloOrvelAbs {
public:
    /// Both must outlive this object; `transmitterExtension` may be null.
    RequestProxy(EventTransmitter& eventTransmitter, EventTransmitterExtension* transmitterExtension)
        : transmitter(eventTransmitter), extension(transmitterExtension) {}

    // Requests that the interface lacks.
    [[nodiscard]] bool Enqueue(const ScheduledRequest& request);
    [[nodiscard]] bool EditJobs(const JobsEdit& edit);
    [[nodiscard]] bool SetQueueState(const QueueState& state);
    [[nodiscard]] bool FetchQueueState();
    [[nodiscard]] bool FetchJobs(const JobsQuery& query);

    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& info) override;
    [[nodiscard]] bool CancelJobs(std::vector<std::wstring>& ids) override;
    [[nodiscard]] bool CancelAllJobs() override;
    [[nodiscard]] bool FetchScenariosRequest() override;
    [[nodiscard]] bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) override;
    [[nodiscard]] bool InitJobsRequest() override;
    [[nodiscard]] bool DeleteJobsRequest(std::vector<std::wstring>& ids) override;
    [[nodiscard]] bool FetchLocalizedStringsRequest(const std::wstring& culture) override;
    [[nodiscard]] bool InitCultureRequest() override;
    [[nodiscard]] bool TerminateRequest() override;
    [[nodiscard]] bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) override;

    // These requests need dialogs; a host rejects them.
    [[nodiscard]] bool FetchServiceListRequest() override;
    [[nodiscard]] bool FetchUserSettingsRequest() override;
    [[nodiscard]] bool WriteUserSettingsRequest(WriteUserSettingsInfo& settings) override;
    [[nodiscard]] bool ClearUserSettingsRequest() override;
    [[nodiscard]] bool ShowSettingDialogRequest() override;
    [[nodiscard]] bool FetchScenarioEditorPathRequest() override;
    [[nodiscard]] bool FetchPreviousStateFilePathRequest() override;
    [[nodiscard]] bool FetchThirdPartyNoticesPathRequest() override;

private:
    template <typename Content>
    [[nodiscard]] bool Send(const events::Event<Content>& event, const std::type_identity_t<Content>& content);
    [[nodiscard]] bool Post(const std::wstring& name, const std::wstring& payload);

    EventTransmitter& transmitter;
    EventTransmitterExtension* extension;
};

} // namespace front_end
