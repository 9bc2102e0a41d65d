#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ServiceRecords.h"

#include <string>
#include <vector>

/// The requests that a front end can send to the engine. Each operation returns true when the request was sent; the
/// answer arrives later, through `IVanteloPresenter`.
///
/// The order of the operations is part of the interface, without a virtual destructor before them: delete a proxy
/// through its own type.
class IVanteloOrvelAbs {
public:
    /// Requests one job per input set. The answer carries the request's `requestId`.
    [[nodiscard]] virtual bool EnqueueJobs(EnqueueJobsInfo& info) = 0;
    /// Requests the cancellation of the jobs named by id or number.
    [[nodiscard]] virtual bool CancelJobs(std::vector<std::wstring>& ids) = 0;
    /// Requests the cancellation of all jobs.
    [[nodiscard]] virtual bool CancelAllJobs() = 0;
    /// Requests the scenarios of the catalogue.
    [[nodiscard]] virtual bool FetchScenariosRequest() = 0;
    /// Requests the parameter sets of the scenario with this catalogue id.
    [[nodiscard]] virtual bool FetchScenarioParameterSetsRequest(const std::wstring& scenarioId) = 0;
    /// Requests the whole job list.
    [[nodiscard]] virtual bool InitJobsRequest() = 0;
    /// Requests the deletion of the jobs named by id or number.
    [[nodiscard]] virtual bool DeleteJobsRequest(std::vector<std::wstring>& ids) = 0;
    /// Requests the string resources of a culture.
    [[nodiscard]] virtual bool FetchLocalizedStringsRequest(const std::wstring& culture) = 0;
    /// Requests the culture selected in the settings.
    [[nodiscard]] virtual bool InitCultureRequest() = 0;
    /// Requests the end of the engine's process.
    [[nodiscard]] virtual bool TerminateRequest() = 0;
    /// Requests the services that the host offers.
    [[nodiscard]] virtual bool FetchServiceListRequest() = 0;
    /// Requests the user's settings.
    [[nodiscard]] virtual bool FetchUserSettingsRequest() = 0;
    /// Requests that the host stores values of the user's settings.
    [[nodiscard]] virtual bool WriteUserSettingsRequest(WriteUserSettingsInfo& settings) = 0;
    /// Requests that the user's settings become the built-in ones.
    [[nodiscard]] virtual bool ClearUserSettingsRequest() = 0;
    /// Requests the host's settings dialog.
    [[nodiscard]] virtual bool ShowSettingDialogRequest() = 0;
    /// Requests the path of the scenario editor.
    [[nodiscard]] virtual bool FetchScenarioEditorPathRequest() = 0;
    /// Requests the path of the file with the front end's previous state.
    [[nodiscard]] virtual bool FetchPreviousStateFilePathRequest() = 0;
    /// Requests the status of the jobs named by id or number.
    [[nodiscard]] virtual bool CheckJobStatusRequest(const std::vector<std::wstring>& ids) = 0;
    /// Requests the path of the third-party notices.
    [[nodiscard]] virtual bool FetchThirdPartyNoticesPathRequest() = 0;

protected:
    IVanteloOrvelAbs() = default;
    /// Derived classes may be copied.
    IVanteloOrvelAbs(const IVanteloOrvelAbs&) = default;
    /// Derived classes may be assigned.
    IVanteloOrvelAbs& operator=(const IVanteloOrvelAbs&) = default;
    ~IVanteloOrvelAbs() = default;
};
