#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/IVanteloOrvelAbs.h"

class EventTransmitter;

/// Sends the requests that the command line needs through a transmitter, each under its own name. A copy sends through
/// the same transmitter.
///
/// Threads: as the transmitter allows; it holds no state of its own.
class CONTROLLER_API CLIOrvelProxy : public IVanteloOrvelAbs {
public:
    /// `eventTransmitter` is not owned and outlives the proxy; null when there is no connection.
    explicit CLIOrvelProxy(EventTransmitter* eventTransmitter);
    CLIOrvelProxy(const CLIOrvelProxy& other);
    CLIOrvelProxy& operator=(const CLIOrvelProxy& other);
    virtual ~CLIOrvelProxy();

    // Without a transmitter these send nothing and return false; otherwise the transmitter's result.
    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& info) override;
    [[nodiscard]] bool CancelJobs(std::vector<std::wstring>& ids) override;
    [[nodiscard]] bool CancelAllJobs() override;
    [[nodiscard]] bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) override;

    // The command line has no use for these: they send nothing and return true.
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

/// Waits for the answer to a status request: until both of the presenters' process-wide flags say that it has begun and
/// ended, or the time is spent, which is not reported. Waits in ticks of 100 ms, each ended early by the flag, one time
/// less than ten times the seconds of the environment variable QRV_KT_WAIT_RESPONSE_SEC (20 where it is not set; text
/// without a number is 0; 0 and less do not wait). The variable is read once in a process, a negative value again at
/// the next call. The number of looks is calculated in 32 bits and wraps round: a value beyond 2147483 waits for some
/// other, possibly no, time.
///
/// One command at a time: not from several threads.
CONTROLLER_API void WaitForResponse();
