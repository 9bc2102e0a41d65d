#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/IVanteloOrvelAbs.h"

class EventTransmitter;

/// Sends the requests of the command line through a transmitter, each as the event of its name. A copy sends through
/// the same transmitter.
///
/// Threads: any that the transmitter allows; the proxy has no mutable state.
class CONTROLLER_API CLIOrvelProxy : public IVanteloOrvelAbs {
public:
    /// `eventTransmitter` is not owned and must outlive the proxy. Null means not connected: every request fails.
    explicit CLIOrvelProxy(EventTransmitter* eventTransmitter);
    /// Sends through the same transmitter.
    CLIOrvelProxy(const CLIOrvelProxy& other);
    /// Sends through the transmitter of `other` from now on.
    CLIOrvelProxy& operator=(const CLIOrvelProxy& other);
    virtual ~CLIOrvelProxy();

    // Return the result of the transmitter's `SendEvent`, false without a transmitter.
    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& info) override;
    [[nodiscard]] bool CancelJobs(std::vector<std::wstring>& ids) override;
    [[nodiscard]] bool CancelAllJobs() override;
    [[nodiscard]] bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) override;

    // Not used by the command line: send nothing and return true.
    [[nodiscard]] bool FetchScenariosRequest() override;
    [[nodiscard]] bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) override;
    [[nodiscard]] bool InitJobsRequest() override;
    [[nodiscard]] bool DeleteJobsRequest(std::vector<std::wstring>& ids) override;
    [[nodiscard]] bool FetchLocalizedStringsRequest(const std::wstring& culture) override;
    [[nodiscard]] bool InitCultureRequest() override;
    [[nodiscard]] bool TerminateRequest() override;
    [[nodiscard]] bool FetchServiceListRequest() override;
    [[nodiscard]] bool FetchUserSettingsRequest() override;
    [[nodiscard]] bool WriteUserSettingsRequest(WriteUserSettingsInfo& settings) override;
    [[nodiscard]] bool ClearUserSettingsRequest() override;
    [[nodiscard]] bool ShowSettingDialogRequest() override;
    [[nodiscard]] bool FetchScenarioEditorPathRequest() override;
    [[nodiscard]] bool FetchPreviousStateFilePathRequest() override;
    [[nodiscard]] bool FetchThirdPartyNoticesPathRequest() override;

private:
    template <typename... Content>
    [[nodiscard]] bool Send(const std::wstring& name, const Content&... content) const;

    EventTransmitter* transmitter;
};

/// Waits for the answer to a status request: returns when the presenters' process-wide flags say that the answer has
/// begun and ended, or after the timeout. A timeout is not reported. Units: the environment variable
/// QRV_KT_WAIT_RESPONSE_SEC holds the timeout in seconds. It is 20 where the variable is not set and 0 where its text
/// holds no number; 0 and less do not wait. The wait consists of ticks of 100 ms, each ended early by the flag, one
/// tick fewer than ten times the seconds. The tick count is calculated in 32 bits and wraps round: a value beyond
/// 2147483 yields a different timeout, possibly none. The variable is read once per process; a negative value is read
/// again at the next call.
///
/// Threads: one at a time.
CONTROLLER_API void WaitForResponse();
