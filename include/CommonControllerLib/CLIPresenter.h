#pragma once

#include "CommonControllerLib/ControllerPresenterAbs.h"
#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class CLIOrvelProxy;

/// Carries out one command of the command line: sends its request through a transmitter, waits for the answer where
/// there is one, and writes a line a job to an output file: the job's number, a comma, the name of its status.
///
/// Commands return nothing and report in the log and in the output file; an output file that cannot be opened loses its
/// lines silently. Commands come from one thread; answers arrive on the transmitter's, one at a time. What answers and
/// commands share is guarded by one process-wide lock (std::system_error when it cannot be had), and a process carries
/// out one command at a time.
class CONTROLLER_API CLIPresenter : public ControllerPresenterAbs {
public:
    /// Loads the event transmitter module, which is never freed, and registers the handlers with the transmitter that
    /// it has for `transmitterId`. Without one, silently, every request fails.
    CLIPresenter(const std::wstring& transmitterId, const std::wstring& modulePath);
    CLIPresenter(const CLIPresenter&) = delete;
    CLIPresenter& operator=(const CLIPresenter&) = delete;
    /// The transmitter must have been left before (`LeaveEventTransmitter`), if it may still deliver.
    ~CLIPresenter() override;

    /// Sends the requests of a jobs file one after another, each under an id of its own, waits up to 200 ms for each
    /// answer, and writes its jobs as queued. A refused job, and a request without an answer, gives "-1,Failed". When
    /// the jobs file cannot be read, that is logged and no output file is made.
    void EnqueueJobsFromFile(const std::wstring& jobFile, const std::wstring& outputFile);

    /// Ask for jobs to be cancelled: one by its id or number; all. Neither wait nor write a file.
    void CancelJobs(const std::wstring& id) const;
    void CancelAllJobs() const;

    /// Asks for the status of jobs, waits for the answer as `WaitForResponse` does, and writes a line for each element
    /// of `ids` by the number that the text begins with (0 without one); "Unknown" where no answer told.
    void CheckJobStatus(const std::vector<std::wstring>& ids, const std::wstring& outputFile);

    /// One line of the output file, ended by "\n".
    static std::string CreateStatusString(int seqId, JobStatus status);

    // For a front end that does more with an answer than write lines to a file

    /// Sends one request under an id of its own and waits for the answer as `EnqueueJobsFromFile` does. `seqIds`
    /// becomes the numbers of its jobs, -1 for a refused one. False, and a single -1, when no answer with jobs came.
    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& request, std::vector<int>& seqIds);
    /// The lines of a request's jobs: queued, or failed where the number is negative.
    static std::string CreateEnqueuedLines(const std::vector<int>& seqIds);

    /// Asks for the status of jobs and waits as `CheckJobStatus` does. The lines of `ids`; false when the answer did
    /// not come in time.
    [[nodiscard]] bool FetchStatusLines(const std::vector<std::wstring>& ids, std::string& lines);

    /// The id in the status answer for a job number; false, `id` as it was, when no answer told of that job.
    [[nodiscard]] bool FindJobId(int seqId, std::wstring& id) const;

    bool EnqueueJobsFinish(const JobEnqueueResult& result) override;
    bool CancelJobsFinish(const std::vector<JobStatusInfo>& infos) override;
    bool CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) override;

    // Nothing for a command line to do: true.
    bool UpdateProgress(const std::vector<JobStatusInfo>& infos) override;
    bool FetchScenariosResponse(const std::vector<ScenarioInfo>& scenarios) override;
    bool FetchScenarioParameterSetsResponse(const std::vector<ScenarioParameterSetInfo>& parameterSets) override;
    bool InitJobsResponse(const std::vector<JobListInfo>& jobs) override;
    bool DeleteJobsResponse(const std::vector<std::wstring>& jobIds) override;
    bool FetchLocalizedStringsResponse(const std::wstring& strings) override;
    bool InitCultureResponse(const std::wstring& culture) override;
    bool TerminateResponse() override;
    bool FetchServiceListResponse(const std::vector<ServiceInfo>& services) override;
    bool FetchUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool WriteUserSettingsResponse() override;
    bool ClearUserSettingsResponse(const UserSettingsInfo& settings) override;
    bool ShowSettingDialogResponse() override;
    bool FetchScenarioEditorPathResponse(const std::wstring& path) override;
    bool FetchPreviousStateFilePathResponse(const std::wstring& path) override;
    bool FetchThirdPartyNoticesPathResponse(const std::wstring& path) override;

private:
    void AddEnqueueJobsId(const std::wstring& requestId, const std::vector<JobIdInfo>& jobIds);
    /// Finds the numbers of a request's jobs; nothing is erased.
    [[nodiscard]] bool FindAndEraseEnqueueJobsId(const std::wstring& requestId, std::vector<int>& seqIds);
    [[nodiscard]] bool WaitForEnqueuedJobs(const std::wstring& requestId, std::vector<int>& seqIds);
    JobStatus FindStatus(int seqId) const;

    std::unique_ptr<CLIOrvelProxy> proxy;
    std::map<std::wstring, std::int32_t> seqIdById;
    std::map<std::wstring, std::vector<std::int32_t>> enqueueResults;
    std::map<std::int32_t, JobStatusInfo> statusBySeqId;
};
