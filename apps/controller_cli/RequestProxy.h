#pragma once

#include "CommonControllerLib/IVanteloOrvelAbs.h"
#include "formats/Events.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace controller_cli {

/// Sends every request that a front end can have, each under its own name. Each is true when the request was queued:
/// whoever sends through this waits for the answers himself, as long as the user wants. Only a transmitter without
/// extension may wait until the request was handled.
class RequestProxy final : public IVanteloOrvelAbs {
public:
    /// Both outlive the proxy; `transmitterExtension` may be null.
    RequestProxy(EventTransmitter& eventTransmitter, EventTransmitterExtension* transmitterExtension)
        : transmitter(eventTransmitter), extension(transmitterExtension) {}

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

    // Only a dialog could serve these; a host refuses them.
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

} // namespace controller_cli
