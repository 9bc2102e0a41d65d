#pragma once

#include "cli/IVanteloOrvelAbs.h"

class EventTransmitter;

namespace controller_cli {

/// Sends every request that a front end can have, each under its own name. Each is true when the request was handed on.
class RequestProxy final : public IVanteloOrvelAbs {
public:
    /// The transmitter outlives the proxy.
    explicit RequestProxy(EventTransmitter& eventTransmitter) : transmitter(eventTransmitter) {}

    bool EnqueueJobs(EnqueueJobsInfo& info) override;
    bool CancelJobs(std::vector<std::wstring>& ids) override;
    bool CancelAllJobs() override;
    bool FetchScenariosRequest() override;
    bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) override;
    bool InitJobsRequest() override;
    bool DeleteJobsRequest(std::vector<std::wstring>& ids) override;
    bool FetchLocalizedStringsRequest(const std::wstring& culture) override;
    bool InitCultureRequest() override;
    bool TerminateRequest() override;
    bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) override;

    // Only a dialog could serve these; a host refuses them.
    bool FetchServiceListRequest() override;
    bool FetchUserSettingsRequest() override;
    bool WriteUserSettingsRequest(WriteUserSettingsInfo& settings) override;
    bool ClearUserSettingsRequest() override;
    bool ShowSettingDialogRequest() override;
    bool FetchScenarioEditorPathRequest() override;
    bool FetchPreviousStateFilePathRequest() override;
    bool FetchThirdPartyNoticesPathRequest() override;

private:
    template <typename... Content>
    bool Send(const std::wstring& name, const Content&... content);
    bool SendText(const std::wstring& name, const std::wstring& text);

    EventTransmitter& transmitter;
};

} // namespace controller_cli
