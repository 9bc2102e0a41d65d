#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ServiceRecords.h"

#include <string>
#include <vector>

/// The requests that a front end can send to the engine. Each operation is true when the request was handed on; the
/// answer comes later, through `IVanteloPresenter`.
///
/// The order of the operations is part of the interface, and no virtual destructor stands before them: a proxy is
/// deleted through its own type.
class IVanteloOrvelAbs {
public:
    /// Asks for one job an input set. The answer carries the request's `requestId`.
    [[nodiscard]] virtual bool EnqueueJobs(EnqueueJobsInfo& info) = 0;
    /// Cancels the jobs named by id or number.
    [[nodiscard]] virtual bool CancelJobs(std::vector<std::wstring>& ids) = 0;
    [[nodiscard]] virtual bool CancelAllJobs() = 0;
    [[nodiscard]] virtual bool FetchScenariosRequest() = 0;
    /// The parameter sets of the scenario with this catalogue id.
    [[nodiscard]] virtual bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) = 0;
    /// Asks for the whole job list.
    [[nodiscard]] virtual bool InitJobsRequest() = 0;
    /// Deletes the jobs named by id or number.
    [[nodiscard]] virtual bool DeleteJobsRequest(std::vector<std::wstring>& ids) = 0;
    /// The string resources of a culture.
    [[nodiscard]] virtual bool FetchLocalizedStringsRequest(const std::wstring& culture) = 0;
    /// Asks for the culture selected in the settings.
    [[nodiscard]] virtual bool InitCultureRequest() = 0;
    /// Asks the engine's process to end.
    [[nodiscard]] virtual bool TerminateRequest() = 0;
    [[nodiscard]] virtual bool FetchServiceListRequest() = 0;
    [[nodiscard]] virtual bool FetchUserSettingsRequest() = 0;
    [[nodiscard]] virtual bool WriteUserSettingsRequest(WriteUserSettingsInfo& settings) = 0;
    [[nodiscard]] virtual bool ClearUserSettingsRequest() = 0;
    [[nodiscard]] virtual bool ShowSettingDialogRequest() = 0;
    [[nodiscard]] virtual bool FetchScenarioEditorPathRequest() = 0;
    [[nodiscard]] virtual bool FetchPreviousStateFilePathRequest() = 0;
    /// Asks for the status of the jobs named by id or number.
    [[nodiscard]] virtual bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) = 0;
    [[nodiscard]] virtual bool FetchThirdPartyNoticesPathRequest() = 0;

protected:
    IVanteloOrvelAbs() = default;
    IVanteloOrvelAbs(const IVanteloOrvelAbs&) = default;
    IVanteloOrvelAbs& operator=(const IVanteloOrvelAbs&) = default;
    ~IVanteloOrvelAbs() = default;
};
