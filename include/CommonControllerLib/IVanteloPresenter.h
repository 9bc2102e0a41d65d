#pragma once

/// @file
/// The answers of the engine to front ends.

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "CommonControllerLib/ServiceRecords.h"

#include <string>
#include <vector>

/// The engine's answers as a front end receives them. Each operation returns true when the answer could be used.
/// Threads: called on the transmitter's thread.
///
/// The order of the operations is part of the interface, without a virtual destructor before them: delete a presenter
/// through its own type.
class IVanteloPresenter {
public:
    /// The answer to a request to enqueue jobs.
    virtual bool EnqueueJobsFinish(const JobEnqueueResult& result) = 0;
    /// The jobs that have changed; sent without a request.
    virtual bool UpdateProgress(const std::vector<JobStatusInfo>& infos) = 0;
    /// The jobs that were cancelled or asked to stop.
    virtual bool CancelJobsFinish(const std::vector<JobStatusInfo>& infos) = 0;
    /// The scenarios of the catalogue.
    virtual bool FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) = 0;
    /// The parameter sets of the requested scenario.
    virtual bool FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& parameterSets) = 0;
    /// The whole job list.
    virtual bool InitJobsResponse(const std::vector<JobListInfo>& jobs) = 0;
    /// The ids of the jobs that were deleted.
    virtual bool DeleteJobsResponse(const std::vector<std::wstring>& jobIds) = 0;
    /// The string resources as JSON text.
    virtual bool FetchLocalizedStringsResponse(const std::wstring& strings) = 0;
    /// The culture selected in the settings.
    virtual bool InitCultureResponse(const std::wstring& culture) = 0;
    /// The engine's process ends.
    virtual bool TerminateResponse() = 0;
    /// The services that the host offers.
    virtual bool FetchServiceListResponse(const std::vector<ServiceInfo>& services) = 0;
    /// The user's settings.
    virtual bool FetchUserSettingsResponse(const UserSettingsInfo& settings) = 0;
    /// The values were stored.
    virtual bool WriteUserSettingsResponse() = 0;
    /// The user's settings after they became the built-in ones.
    virtual bool ClearUserSettingsResponse(const UserSettingsInfo& settings) = 0;
    /// The host has opened its settings dialog.
    virtual bool ShowSettingDialogResponse() = 0;
    /// The path of the scenario editor.
    virtual bool FetchScenarioEditorPathResponse(const std::wstring& path) = 0;
    /// The path of the file with the front end's previous state.
    virtual bool FetchPreviousStateFilePathResponse(const std::wstring& path) = 0;
    /// The status of the requested jobs; each element's `id` is the text given in the request.
    virtual bool CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) = 0;
    /// The path of the third-party notices.
    virtual bool FetchThirdPartyNoticesPathResponse(const std::wstring& path) = 0;

protected:
    IVanteloPresenter() = default;
    /// Derived classes may be copied.
    IVanteloPresenter(const IVanteloPresenter&) = default;
    /// Derived classes may be assigned.
    IVanteloPresenter& operator=(const IVanteloPresenter&) = default;
    ~IVanteloPresenter() = default;
};
