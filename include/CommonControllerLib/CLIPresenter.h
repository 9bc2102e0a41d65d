#pragma once

#include "CommonControllerLib/ControllerPresenterAbs.h"
#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class CLIOrvelProxy;

/// Executes the commands of the command line: sends a request through a transmitter, waits for the answer if the
/// request has one, and writes one line per job to an output file: the job number, a comma, the name of the status.
///
/// Commands return nothing; they report through the log and the output file. An output file that cannot be opened is
/// not reported and its lines are lost.
///
/// Threads: commands come from one thread, one at a time per process; answers arrive on the transmitter's thread, one
/// at a time. A process-wide lock guards the data that both use; std::system_error is thrown when it cannot be
/// acquired.
class CONTROLLER_API CLIPresenter : public ControllerPresenterAbs {
public:
    /// Loads the event transmitter module, which is never unloaded, and registers the handlers with the module's
    /// transmitter for `transmitterId`. On failure nothing is reported, and every later request fails.
    CLIPresenter(const std::wstring& transmitterId, const std::wstring& modulePath);
    CLIPresenter(const CLIPresenter&) = delete;
    CLIPresenter& operator=(const CLIPresenter&) = delete;
    /// Call `LeaveEventTransmitter` first if the transmitter may still deliver.
    ~CLIPresenter() override;

    /// Sends the requests of a jobs file one after another, each with a request id of its own, waits up to 200 ms for
    /// each answer, and writes the jobs as queued. A rejected job, and a request without an answer, yields "-1,Failed".
    /// On failure to read the jobs file, logs an error and creates no output file.
    void EnqueueJobsFromFile(const std::wstring& jobFile, const std::wstring& outputFile);

    /// Requests the cancellation of one job, by id or number. Neither waits nor writes a file.
    void CancelJobs(const std::wstring& id) const;
    /// The same for all jobs.
    void CancelAllJobs() const;

    /// Requests the status of jobs, waits for the answer as `WaitForResponse` does, and writes one line for each
    /// element of `ids`. The job number is the leading number of the element, 0 without one; the status is "Unknown" if
    /// the answer did not include the job.
    void CheckJobStatus(const std::vector<std::wstring>& ids, const std::wstring& outputFile);

    /// Returns one line of the output file, terminated by "\n".
    static std::string CreateStatusString(int seqId, JobStatus status);

    // For front ends that process answers themselves instead of writing them to a file

    /// Sends one request with a request id of its own and waits for the answer as `EnqueueJobsFromFile` does. On
    /// success sets `seqIds` to the job numbers, -1 for a rejected job. On failure (no answer with jobs arrived)
    /// returns false and sets `seqIds` to a single -1.
    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& request, std::vector<int>& seqIds);
    /// As above, with a request that `send` sends, for front ends whose requests have more content.
    [[nodiscard]] bool EnqueueJobs(EnqueueJobsInfo& request, std::vector<int>& seqIds,
                                   const std::function<void()>& send);
    /// Returns one line per job number: queued, or failed where the number is negative.
    static std::string CreateEnqueuedLines(const std::vector<int>& seqIds);

    /// Requests the status of jobs and waits as `CheckJobStatus` does. Sets `lines` to one line for each element of
    /// `ids`. Returns false when the answer did not arrive in time.
    [[nodiscard]] bool FetchStatusLines(const std::vector<std::wstring>& ids, std::string& lines);

    /// Sets `id` to the job id that the status answer gave for a job number. Returns false, and leaves `id` unchanged,
    /// if no answer included that job.
    [[nodiscard]] bool FindJobId(int seqId, std::wstring& id) const;

    bool EnqueueJobsFinish(const JobEnqueueResult& result) override;
    bool CancelJobsFinish(const std::vector<JobStatusInfo>& infos) override;
    bool CheckJobStatusResponse(const std::vector<JobStatusInfo>& infos) override;

    // Not used by the command line: return true.
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
    /// Finds the job numbers in the answer to a request. Despite its name it erases nothing.
    [[nodiscard]] bool FindAndEraseEnqueueJobsId(const std::wstring& requestId, std::vector<int>& seqIds);
    [[nodiscard]] bool WaitForEnqueuedJobs(const std::wstring& requestId, std::vector<int>& seqIds);
    JobStatus FindStatus(int seqId) const;

    std::unique_ptr<CLIOrvelProxy> proxy;
    std::map<std::wstring, std::int32_t> seqIdById;
    std::map<std::wstring, std::vector<std::int32_t>> enqueueResults;
    std::map<std::int32_t, JobStatusInfo> statusBySeqId;
};
