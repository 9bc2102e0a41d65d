#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobEntry.h"
#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <vector>

class FunctionManager;

/// The job engine: the queue of jobs, their execution, and the list of them that survives restarts. One per
/// application.
///
/// It starts no thread and waits for nothing: the host calls `ExecuteJob` and `CheckUpdate` whenever something may have
/// happened. Operations may be called from any thread; each holds the engine's one lock for its whole run, unless it
/// says otherwise, and throws std::system_error when the lock cannot be had. Nothing else is thrown deliberately.
/// Output vectors are appended to, never cleared, unless said otherwise.
class CONTROLLER_API JobEntryManagerBase {
public:
    /// What a function module may call back; handed through to it, never called here.
    using Callback = long (*)(const std::wstring&, const std::wstring&);

    /// Reads the job list file, sets what was not finished to `Canceled`, and deletes jobs beyond the configured age.
    /// `functionManager` is not owned and must outlive the engine. Entries for the listed jobs come from this class's
    /// own `CreateNewJobEntry`: a derived class's is not reached while its base is constructed.
    explicit JobEntryManagerBase(const FunctionManager* functionManager);
    JobEntryManagerBase(const JobEntryManagerBase&) = delete;
    JobEntryManagerBase& operator=(const JobEntryManagerBase&) = delete;
    /// Lets go of all jobs. Running ones are neither cancelled nor waited for.
    virtual ~JobEntryManagerBase();

    /// Appends one `Queued` job for every input set whose files all exist. On true the job list file has been
    /// rewritten. `result` has one element an input set; a rejected set keeps the default one. False, with an error
    /// line and no job, when the scenario is not found or the output directory is empty.
    [[nodiscard]] bool EnqueueJob(EnqueueJobsInfo& request, JobEnqueueResult& result);

    /// Starts the next queued job through the module function "RunScenario" unless one is running. `updated` receives
    /// every job that became `Running` or `Failed`. False when there was nothing to look at. The lock is held while the
    /// module is called. The cursor stays on a started job: after the last job's end one more call is needed before
    /// `IsCompleted` says so.
    bool ExecuteJob(Callback callback, std::vector<JobStatusInfo>& updated);

    /// Cancels the jobs named by id or by number (decimal text): a queued one leaves the queue (`Dequeued`), a running
    /// one is asked to stop (`Canceling`) and becomes `Canceled` when `CheckUpdate` finds its process gone. `cancelled`
    /// receives one record for each queued job, and for each running one as many as ways in which it was asked: two
    /// when the function module took the request, else one. Names of no job, and of jobs in any other status, are
    /// passed over. The job list file is rewritten when `cancelled` is not empty. Always true.
    ///
    /// With `waitForCanceled` it returns when the running ones are no longer `Canceling`. It keeps its thread busy
    /// meanwhile, giving way to others, and needs another thread that calls `CheckUpdate`.
    bool CancelJobs(std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& cancelled, bool waitForCanceled);

    /// `CancelJobs` of every job. Their ids are collected without the lock: not while another thread enqueues or
    /// deletes.
    bool CancelAllJobs(std::vector<JobStatusInfo>& cancelled, bool waitForCanceled);

    /// Sends the function "Terminate" to the module that offers it (the one loaded last). Touches no job and takes no
    /// lock: the module may find itself called by two threads at the same time.
    void Terminate();

    /// Looks once at the process and files of every running job, without waiting; `changed` receives what changed. True
    /// when `changed` is not empty afterwards; the job list file has then been rewritten.
    bool CheckUpdate(std::vector<JobStatusInfo>& changed);

    /// The status of the jobs named by id or by number (decimal text): `statuses` is resized to one element a requested
    /// id, each with the text asked for as its `id`; the status is -1 where there is no such job. Always true.
    bool CheckJobStatus(const std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& statuses);

    /// True when no job waits to be started and none is active.
    bool IsCompleted();

    /// Apply a report that came as JSON text instead of a file: progress; result; the end of a cancelled job. False
    /// when the text cannot be read or names no job (logged at debug level).
    [[nodiscard]] bool UpdateProgress(const std::wstring& progressJson, std::vector<JobStatusInfo>& changed);
    [[nodiscard]] bool UpdateResult(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed);
    [[nodiscard]] bool UpdateToCanceled(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed);

    /// Appends every job's record in list order. Takes no lock: not while another thread calls an operation that adds,
    /// changes or removes jobs. A derived class that is asked by several threads holds the lock around the call. Always
    /// true.
    bool GetJobList(std::vector<JobListInfo>& records);

    /// Deletes the jobs named by id or number with their work directories, except active ones; `deleted` receives the
    /// ids that were deleted. Deleting the last job restarts the numbering. Always true.
    bool DeleteJobs(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted);

    /// Searches the configured directories for scenarios, appends them to `scenarios` and adds them to the catalogue.
    /// Always false; the outcome is in `scenarios`. Takes no lock: not while another thread enqueues or uses the
    /// catalogue.
    bool FetchScenarios(std::vector<ScenarioInfo>& scenarios);
    /// Appends the parameter sets of a catalogued scenario; false when `scenarioId` is not in the catalogue. Takes no
    /// lock: not while another thread fetches scenarios.
    [[nodiscard]] bool FetchScenarioParameterSets(std::vector<ScenarioParameterSetInfo>& parameterSets,
                                                  const std::wstring& scenarioId);

protected:
    /// What a derived class may ask of the loading of the job list; as it stands, what the public constructor does.
    struct Loading {
        /// A job that was taken out of the queue stays `Dequeued` instead of becoming `Canceled`.
        bool keepsDequeued = false;
        /// Jobs beyond the configured age are deleted; otherwise the derived class calls `DeleteOldJobs` itself.
        bool deletesOldJobs = true;
    };
    /// As the public constructor, with `loading` in place of what that does.
    JobEntryManagerBase(const FunctionManager* functionManager, const Loading& loading);

    /// Deletes jobs as `DeleteJobs` does, of which the derived class may make more.
    using JobDeletion = std::function<bool(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted)>;
    /// Lets `deleteJobs` delete the jobs beyond the configured age, and logs how many it deleted. Takes no lock: not
    /// while another thread calls an operation that adds, changes or removes jobs.
    void DeleteOldJobs(const JobDeletion& deleteJobs);

    /// Makes the entry for a job, a default one for null; never null. The engine takes ownership at once.
    virtual JobEntry* CreateNewJobEntry(const JobListInfo* info);
    /// True when execution has to wait: the job at the cursor is running or being cancelled. Called under the lock,
    /// never with the cursor at the end.
    virtual bool IsSuspendJobExecution();
    /// Writes the job list file after a change: as it stands, the whole list through the companion. Called under the
    /// lock. A write that fails is not reported: the next change writes the whole list again.
    virtual void WriteJobList();

    std::map<std::wstring, ScenarioInfo> scenarioMap;
    const FunctionManager* functionManager;
    std::vector<ScenarioDirectory> scenarioDirectories;
    std::wstring workDirectory;
    std::list<std::shared_ptr<JobEntry>> jobList;
    std::list<std::shared_ptr<JobEntry>>::iterator nextJob;
    std::set<std::wstring> knownJobIds;
    std::mutex mutex;
    std::int32_t nextSeqId;

private:
    // Set-up
    void ReloadJobs(const Loading& loading);
    void AdoptListedJob(JobEntry& job, const Loading& loading);
    std::vector<std::wstring> JobsOlderThan(double seconds);

    // Enqueue; under the lock
    /// Finds the scenario that a request names, in the catalogue or as a file; `scenarioDir` then becomes the file's
    /// directory. False (logged) when there is none.
    [[nodiscard]] bool ResolveScenario(const ScenarioInfo& requested, ScenarioInfo& scenario,
                                       std::wstring& scenarioDir);
    /// Searches a scenario file by its path, else below the scenario directories in order. False leaves `path`.
    [[nodiscard]] bool FindSceanrioFile(const std::wstring& scenario, std::wstring& path);
    /// Appends one job for each usable input set; `record` holds what they have in common.
    void AppendJobs(const EnqueueJobsInfo& request, JobListInfo& record, const std::wstring& scenarioDir,
                    JobEnqueueResult& result);
    void IdentifyJob(JobListInfo& record, std::random_device& device);
    void AppendJob(const JobListInfo& record, const std::wstring& scenarioDir);

    // Identity of jobs; under the lock
    /// An id that no job has had while this engine lives, and that is no name in the work directory.
    std::wstring CreateUniqueId(std::random_device& device);
    int CreateSequentialId();
    /// The first job whose id is exactly `id`.
    [[nodiscard]] bool FindJobEntry(const std::wstring& id, std::shared_ptr<JobEntry>& entry);

    // Execution; under the lock
    /// Starts a queued job, or makes it `Failed`; true when it runs. False too for a job that is not queued.
    [[nodiscard]] bool StartJob(JobEntry& job, Callback callback, std::vector<JobStatusInfo>& updated);
    [[nodiscard]] bool CallRunScenario(JobEntry& job, Callback callback);

    // Cancellation; under the lock
    /// One element each time a running job was reported.
    using WaitList = std::vector<std::shared_ptr<JobEntry>>;
    void CancelJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled, WaitList& waitList);
    void CancelRunningJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled,
                          WaitList& waitList);

    // Tracking
    /// Lets a report change the job with this id and reports the change. False (logged with `kind`) when there is no
    /// such job. Takes the lock.
    [[nodiscard]] bool ApplyReport(const std::wstring& jobId, const std::wstring& kind,
                                   std::vector<JobStatusInfo>& changed, const std::function<void(JobEntry&)>& report);

    // Job list file; under the lock
    void ReadJobList(std::list<std::shared_ptr<JobEntry>>& jobs);
    void UpdateJobList();

    // Deletion; under the lock
    using JobPosition = std::list<std::shared_ptr<JobEntry>>::iterator;
    /// Deletes one job with its work directory, and returns the position behind it.
    JobPosition DeleteJob(JobPosition position);
    /// When no job is left, the next one gets number 1.
    void RestartNumbering();
};
