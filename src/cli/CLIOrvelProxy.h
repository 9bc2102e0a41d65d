#pragma once

#include "cli/IVanteloOrvelAbs.h"
#include "platform/Export.h"

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
    bool EnqueueJobs(EnqueueJobsInfo& info) override;
    bool CancelJobs(std::vector<std::wstring>& ids) override;
    bool CancelAllJobs() override;
    bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) override;

    // The command line has no use for these: they send nothing and return true.
    bool FetchScenariosRequest() override;
    bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) override;
    bool InitJobsRequest() override;
    bool DeleteJobsRequest(std::vector<std::wstring>& ids) override;
    bool FetchLocalizedStringsRequest(const std::wstring& culture) override;
    bool InitCultureRequest() override;
    bool TerminateRequest() override;
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
    bool Send(const std::wstring& name, const Content&... content) const;

    EventTransmitter* transmitter;
};

/// Waits for the answer to a status request: until both of the presenters' process-wide flags say that it has begun and
/// ended, or the time is spent, which is not reported. Looks every 100 ms, one time less than ten times the seconds of
/// the environment variable QRV_KT_WAIT_RESPONSE_SEC (20 where it is not set; text without a number is 0; 0 and less do
/// not wait). The variable is read once in a process, a negative value again at the next call. The number of looks is
/// calculated in 32 bits and wraps round: a value beyond 2147483 waits for some other, possibly no, time.
///
/// One command at a time: not from several threads.
CONTROLLER_API void WaitForResponse();
