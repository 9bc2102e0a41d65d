#pragma once

/// @file
/// The job engine, for programs that have one of their own or derive from it.

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

/// The job engine: queues jobs, executes them, and keeps a job list that survives restarts. One per application.
///
/// Threads: it starts no thread and does not wait; the host calls `ExecuteJob` and `CheckUpdate` after every event that
/// may have changed a job. Operations may be called from any thread; unless stated otherwise, each holds the engine's
/// only lock for its whole run and throws std::system_error when the lock cannot be acquired. No other exception is
/// thrown deliberately. Unless stated otherwise, output vectors are appended to and never cleared.
class CONTROLLER_API JobEntryManagerBase {
public:
    /// The function that a function module may call; passed to the module and never called by the engine.
    using Callback = long (*)(const std::wstring&, const std::wstring&);

    /// Reads the job list file, sets unfinished jobs to `Canceled`, and deletes jobs beyond the configured age.
    /// `functionManager` is not owned and must outlive the engine. Entries for the listed jobs are created by this
    /// class's `CreateNewJobEntry`: an override in a derived class is not called during the construction of its base.
    explicit JobEntryManagerBase(const FunctionManager* functionManager);
    JobEntryManagerBase(const JobEntryManagerBase&) = delete;
    JobEntryManagerBase& operator=(const JobEntryManagerBase&) = delete;
    /// Releases all jobs. Does not cancel running ones or wait for them.
    virtual ~JobEntryManagerBase();

    /// Appends one `Queued` job for every input set whose files all exist, and sets `result` to one element per input
    /// set, a default one for a rejected set. On success rewrites the job list file and returns true. On failure
    /// (scenario not found, or empty output directory) logs an error, creates no job and returns false.
    [[nodiscard]] bool EnqueueJob(EnqueueJobsInfo& request, JobEnqueueResult& result);

    /// Starts the next queued job through the module function "RunScenario", unless a job is running. Appends every job
    /// that became `Running` or `Failed` to `updated`. Returns false when the cursor is at the end of the list or at an
    /// active job. Holds the lock during the call of the module. The cursor stays on a started job, so `IsCompleted`
    /// returns true only after one further call following the end of the last job: required by the published interface,
    /// held by ExecutionTest.CursorStaysOnTheLastJobUntilOneMoreCall.
    bool ExecuteJob(Callback callback, std::vector<JobStatusInfo>& updated);

    /// Cancels the jobs named by id or by number (decimal text). A queued job leaves the queue (`Dequeued`); a running
    /// job is asked to stop (`Canceling`) and becomes `Canceled` when `CheckUpdate` finds that its process has ended.
    /// `cancelled` receives one record per queued job; for a running job it receives two when the function module
    /// accepted the request, otherwise one: required by the published interface, held by
    /// CancellationTest.RunningJobWhoseModuleAcceptsIsListedTwice. Unknown names and jobs in any other status are
    /// ignored. Rewrites the job list file when `cancelled` is not empty. Returns true always.
    ///
    /// With `waitForCanceled` it returns when no such job is `Canceling` any longer. It polls in a busy loop that
    /// yields the processor, and needs another thread that calls `CheckUpdate`.
    bool CancelJobs(std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& cancelled, bool waitForCanceled);

    /// Calls `CancelJobs` for every job. Threads: collects the ids without the lock, so no other thread may enqueue or
    /// delete jobs during the call.
    bool CancelAllJobs(std::vector<JobStatusInfo>& cancelled, bool waitForCanceled);

    /// Calls the function "Terminate" of the module that provides it (the last one loaded). Changes no job.
    /// Threads: takes no lock, so the module may be called by two threads at once.
    void Terminate();

    /// Checks the process and files of every running job once, without waiting, and appends the changed jobs to
    /// `changed`. Returns true when `changed` is not empty afterwards; the job list file has then been rewritten.
    bool CheckUpdate(std::vector<JobStatusInfo>& changed);

    /// Returns the status of the jobs named by id or by number (decimal text). Resizes `statuses` to one element per
    /// element of `ids`; the `id` of each is the text given in `ids`, and the status of an unknown job is -1. Returns
    /// true always.
    bool CheckJobStatus(const std::vector<std::wstring>& ids, std::vector<JobStatusInfo>& statuses);

    /// Returns true when no job is waiting to start and none is active.
    bool IsCompleted();

    /// Applies a progress report given as JSON text instead of a file. On failure (the text cannot be parsed or names
    /// no known job) logs at debug level and returns false.
    [[nodiscard]] bool UpdateProgress(const std::wstring& progressJson, std::vector<JobStatusInfo>& changed);
    /// The same for a result.
    [[nodiscard]] bool UpdateResult(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed);
    /// The same for the end of a cancelled job.
    [[nodiscard]] bool UpdateToCanceled(const std::wstring& resultJson, std::vector<JobStatusInfo>& changed);

    /// Appends every job's record in list order. Returns true always. Threads: takes no lock, so no other thread may
    /// add, change or remove jobs during the call. A derived class with several calling threads must hold the lock
    /// around the call.
    bool GetJobList(std::vector<JobListInfo>& records);

    /// Deletes the jobs named by id or number with their work directories, except active jobs, and appends the ids of
    /// deleted jobs to `deleted`. A name in `ids` that matches no deletable job is appended too if it occurs twice.
    /// Deleting the last job restarts the numbering. Returns true always.
    bool DeleteJobs(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted);

    /// Searches the configured directories for scenarios, appends them to `scenarios` and adds them to the catalogue.
    /// Returns false always; the result is in `scenarios`: required by the published interface, held by
    /// ScenarioCatalogueTest.FetchingTwiceGivesTheSameIdentifiersBehindWhatTheCallerHas. Threads: takes no lock, so no
    /// other thread may enqueue jobs or use the catalogue during the call.
    bool FetchScenarios(std::vector<ScenarioInfo>& scenarios);
    /// Appends the parameter sets of a scenario of the catalogue. Returns false when `scenarioId` is not in the
    /// catalogue. Threads: takes no lock, so no other thread may fetch scenarios during the call.
    [[nodiscard]] bool FetchScenarioParameterSets(std::vector<ScenarioParameterSetInfo>& parameterSets,
                                                  const std::wstring& scenarioId);

protected:
    /// Options for loading the job list. The defaults are the behaviour of the public constructor.
    struct Loading {
        /// A `Dequeued` job keeps its status instead of becoming `Canceled`.
        bool keepsDequeued = false;
        /// The same for a `Queued` job.
        bool keepsQueued = false;
        /// A `Running` job becomes `Queued` instead of `Canceled`.
        bool requeuesRunning = false;
        /// Jobs beyond the configured age are deleted. If false, the derived class calls `DeleteOldJobs` itself.
        bool deletesOldJobs = true;
        /// Appends the entries of the listed jobs to the list. Empty: the list is read through `ControllerCSWrapper`.
        std::function<void(std::list<std::shared_ptr<JobEntry>>& jobs)> readJobs;
    };
    /// Constructs as the public constructor does, with the options `loading`.
    JobEntryManagerBase(const FunctionManager* functionManager, const Loading& loading);

    /// Deletes jobs as `DeleteJobs` does; a derived class may supply an extended version.
    using JobDeletion = std::function<bool(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted)>;
    /// Deletes the jobs beyond the configured age through `deleteJobs` and logs their number. Threads: takes no lock,
    /// so no other thread may add, change or remove jobs during the call.
    void DeleteOldJobs(const JobDeletion& deleteJobs);

    /// Creates the entry for a job, a default one if `info` is null. Never returns null. The engine takes ownership.
    virtual JobEntry* CreateNewJobEntry(const JobListInfo* info);
    /// Returns true when execution has to wait: the job at the cursor is running or being cancelled. Called under the
    /// lock, and never with the cursor at the end.
    virtual bool IsSuspendJobExecution();
    /// Moves the cursor (`nextJob`) to the job that is to be started next, or to the end of the list if none may start.
    /// Called under the lock before each start. The base implementation leaves it: jobs start in list order.
    virtual void SelectNextJob();
    /// What an operation changed in the list.
    struct JobListChange {
        /// New jobs and jobs with new values, in list order.
        std::vector<std::shared_ptr<JobEntry>> jobs;
        /// Jobs that have left the list.
        std::vector<std::shared_ptr<JobEntry>> deleted;
    };
    /// Writes the job list file after a change. The base implementation writes the whole list through
    /// `ControllerCSWrapper`, whatever `change` is; the change is empty when only the cursor has moved. Called under
    /// the lock. A failed write is not reported: the next change writes the whole list again.
    virtual void WriteJobList(const JobListChange& change);
    /// A place in the list.
    using JobPosition = std::list<std::shared_ptr<JobEntry>>::iterator;
    /// Returns, in list order, at least the jobs whose id or number (decimal text) is among `names`. The base
    /// implementation returns all jobs; a derived class with an index returns fewer. Called under the lock.
    virtual std::vector<JobPosition> JobsNamed(const std::set<std::wstring>& names);
    /// The same for the active jobs.
    virtual std::vector<JobPosition> ActiveJobs();

    /// The catalogue: scenarios by id.
    std::map<std::wstring, ScenarioInfo> scenarioMap;
    /// Not owned.
    const FunctionManager* functionManager;
    /// The directories to search for scenarios, in order.
    std::vector<ScenarioDirectory> scenarioDirectories;
    /// The directory that contains the work directories of new jobs.
    std::wstring workDirectory;
    /// All jobs in the order of execution.
    std::list<std::shared_ptr<JobEntry>> jobList;
    /// The cursor: the job to start next or the one started last; the end of the list if no job is left.
    std::list<std::shared_ptr<JobEntry>>::iterator nextJob;
    /// The ids of all jobs that this engine has ever had.
    std::set<std::wstring> knownJobIds;
    /// The engine's only lock; not recursive.
    std::mutex mutex;
    /// The number of the next job to be enqueued.
    std::int32_t nextSeqId;

private:
    // Set-up
    void ReloadJobs(const Loading& loading);
    void AdoptListedJob(JobEntry& job, const Loading& loading);
    std::vector<std::wstring> JobsOlderThan(double seconds);

    // Enqueue; under the lock
    /// Finds the scenario that a request names, in the catalogue or as a file; for a file, sets `scenarioDir` to its
    /// directory. On failure logs an error and returns false.
    [[nodiscard]] bool ResolveScenario(const ScenarioInfo& requested, ScenarioInfo& scenario,
                                       std::wstring& scenarioDir);
    /// Finds a scenario file by its path, otherwise below the scenario directories in order. On failure returns false
    /// and leaves `path` unchanged.
    [[nodiscard]] bool FindSceanrioFile(const std::wstring& scenario, std::wstring& path);
    /// Appends one job per usable input set; `record` holds the values common to all.
    void AppendJobs(const EnqueueJobsInfo& request, JobListInfo& record, const std::wstring& scenarioDir,
                    JobEnqueueResult& result, JobListChange& change);
    void IdentifyJob(JobListInfo& record, std::random_device& device);
    const std::shared_ptr<JobEntry>& AppendJob(const JobListInfo& record, const std::wstring& scenarioDir);

    // Identity of jobs; under the lock
    /// Creates an id that no job has had while this engine exists and that is not used as a name in the work directory.
    std::wstring CreateUniqueId(std::random_device& device);
    int CreateSequentialId();
    std::vector<JobPosition> AllJobs();
    /// Finds the first job whose id equals `id` exactly.
    [[nodiscard]] bool FindJobEntry(const std::wstring& id, std::shared_ptr<JobEntry>& entry);

    // Execution; under the lock
    /// Starts a queued job, or sets it to `Failed`. Returns true when it runs.
    [[nodiscard]] bool StartJob(JobEntry& job, Callback callback, std::vector<JobStatusInfo>& updated);
    [[nodiscard]] bool CallRunScenario(JobEntry& job, Callback callback);

    // Cancellation; under the lock
    /// One element for each time that a running job was reported.
    using WaitList = std::vector<std::shared_ptr<JobEntry>>;
    void CancelJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled, WaitList& waitList);
    /// Removes the jobs that have left the list since.
    void KeepListed(std::vector<std::shared_ptr<JobEntry>>& jobs);
    void CancelRunningJob(const std::shared_ptr<JobEntry>& job, std::vector<JobStatusInfo>& cancelled,
                          WaitList& waitList);

    // Tracking
    /// Applies `report` to the job with this id and appends the job to `changed`. On failure (unknown job) logs `kind`
    /// and returns false. Takes the lock.
    [[nodiscard]] bool ApplyReport(const std::wstring& jobId, const std::wstring& kind,
                                   std::vector<JobStatusInfo>& changed, const std::function<void(JobEntry&)>& report);

    // Job list file; under the lock
    void ReadJobList(std::list<std::shared_ptr<JobEntry>>& jobs);
    void UpdateJobList(const JobListChange& change);

    // Deletion; under the lock
    /// Deletes one job with its work directory.
    void DeleteJob(JobPosition position);
    /// If no job is left, the next job gets number 1.
    void RestartNumbering();
};
