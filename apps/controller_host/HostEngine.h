#pragma once

#include "CommonControllerLib/JobEntryManagerBase.h"
#include "controller_host/JobIndex.h"
#include "controller_host/ReuseCandidates.h"
#include "controller_host/scheduling/Scheduler.h"

#include "formats/JobListFile.h"
#include "formats/JobListJournal.h"
#include "formats/Provenance.h"
#include "formats/Scheduling.h"
#include "services/Settings.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The job engine of a host that waits for process handles instead of polling.
class HostEngine : public JobEntryManagerBase {
public:
    /// Reads the job list; the journal that a killed host left counts as a change. A job that was dequeued stays
    /// `Dequeued`; the setting `afterRestart` decides about waiting and interrupted jobs; only `DeleteOldJobsDurably`
    /// deletes old jobs. `manager` is not owned and must outlive the engine.
    explicit HostEngine(const FunctionManager* manager);

    using JobEntryManagerBase::EnqueueJob;
    /// As of the base class, with what the user decides about the start of the jobs, for which `ResolveScheduling` must
    /// have succeeded. Not thread-safe.
    [[nodiscard]] bool EnqueueJob(ScheduledRequest& request, JobEnqueueResult& result);
    /// Replaces the names of predecessors by ids. Returns false, and sets `problem`, if the request cannot be
    /// scheduled: a predecessor is not listed, or more is needed of a resource than there is.
    [[nodiscard]] bool ResolveScheduling(Scheduling& scheduling, std::wstring& problem);
    /// Adds what the description of the request's scenario says that each job needs; what the request says counts more.
    /// The name of the scenario is resolved.
    void AddNeedsOfScenario(ScheduledRequest& request);
    /// Changes waiting jobs; others are ignored. Appends reports of the changed ones to `edited`, in list order. On
    /// failure returns false, sets `problem` and changes nothing.
    [[nodiscard]] bool EditJobs(const JobsEdit& edit, std::vector<JobStatusInfo>& edited, std::wstring& problem);
    /// Returns reports of the jobs that have ended because of a predecessor since the last call.
    std::vector<JobStatusInfo> TakeStranded();
    /// The time at which the next job may start that waits only for its time; nothing if none does, or none may start
    /// now. Units: seconds since 1970-01-01 UTC.
    std::optional<std::int64_t> NextStartTime();
    /// The queried jobs, each with what is kept of it and why it waits, in list order.
    std::vector<ListedJob> Rows(const JobsQuery& query = {});

    QueueState State() const { return state; }
    /// Stores the state durably. On failure returns false, sets `problem` and changes nothing.
    [[nodiscard]] bool SetState(const QueueState& newState, std::wstring& problem);

    /// Stops what must not outlast the host: cancels all jobs, or only the active ones if the others wait for the next
    /// host. Jobs that the next host runs again are stopped but stay `Running` until their processes end: then they
    /// wait.
    void StopAtEnd(std::vector<JobStatusInfo>& cancelled);

    /// The process handles of all active jobs. The jobs own them; they are valid until the next `CheckUpdate`.
    std::vector<void*> ActiveProcesses();

    /// As of the base class. A job on hold waits, too. Hides that of the base class, whose cursor says nothing about
    /// jobs that may not start.
    bool IsCompleted();

    /// True while a job is running or being cancelled, with or without a process.
    bool HasActiveJobs();
    /// True while a job waits, is running or being cancelled.
    bool HasJobsLeft();

    /// Reports of the jobs that an enqueue request created, in list order, without rejected input sets.
    std::vector<JobStatusInfo> StatusOf(const std::vector<JobIdInfo>& jobs);

    /// The listed jobs named by id or by number.
    std::vector<JobListInfo> Listed(const std::vector<std::wstring>& names);
    /// Reports with `unlistedStatus` for those of `jobs` that are no longer listed.
    std::vector<JobStatusInfo> NoLongerListed(const std::vector<JobListInfo>& jobs);

    /// `DeleteJobs` that survives a crash: the next host completes it with `FinishDeletions`. Not thread-safe. Always
    /// returns true.
    bool DeleteJobsDurably(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted);

    /// Searches the scenario directories of the settings and returns the scenarios found: those of the engine's
    /// catalogue, then the scripts in other languages that the setting `interpreters` names.
    std::vector<ScenarioInfo> UpdateCatalogue();

    /// The problems found in the directories searched last; see `FindScenarioProblems`.
    std::vector<std::wstring> ScenarioProblems() const;

    /// Resolves a user's name of a scenario to the name by which the engine finds it. An id is unchanged. An absolute
    /// path, a path relative to a scenario directory, or the name of a file anywhere below one becomes the scenario's
    /// id if it is catalogued, otherwise an absolute path. Searches the directories again if the name is not found at
    /// first. On failure returns false and sets `problem`.
    [[nodiscard]] bool ResolveScenarioName(std::wstring& name, std::wstring& problem);

    /// Returns the parameter sets of a scenario in `sets`; it may be named as for `ResolveScenarioName`. Returns false,
    /// and sets `problem`, for an unknown or missing scenario or a broken description, but not for one without sets.
    [[nodiscard]] bool ReadParameterSets(const std::wstring& scenarioId, std::vector<ScenarioParameterSetInfo>& sets,
                                         std::wstring& problem);

    /// Writes the reasons of the failed jobs among `changed` whose scenarios gave none (`FailureReasons`). Called
    /// before front ends are notified of the failures.
    void ExplainFailures(const std::vector<JobStatusInfo>& changed);
    /// Text appended to the reason of jobs that fail because no function module accepts them.
    void SetModuleProblems(std::vector<std::wstring> problems) { moduleProblems = std::move(problems); }
    /// Removes the reasons of jobs that are no longer listed.
    void ForgetFailures();

    /// Blocks until all changes of the list are on the disk. If that fails, the list is unwritten (`job_list_file`).
    void FlushJobList();
    /// Returns true if the list has changes that are not in its snapshot. Threads: the loop's only.
    bool HasChanges() const { return hasChanges || job_list_file::IsUnwritten(); }
    std::chrono::steady_clock::time_point LastChange() const { return lastChange; }
    /// Writes a snapshot, which takes up the journal.
    void FoldJournal();
    /// Writes the list as one file without a journal, as programs without journals read it.
    void EndJournal();

    /// Completes the deletions that an earlier host did not finish.
    void FinishDeletions();

    /// Deletes the jobs older than the configured age, durably. Called before any other thread uses the engine.
    void DeleteOldJobsDurably();

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override;
    /// What is kept of a job that is being enqueued; the entry must derive from `HostJobEntry`.
    QueueRecord NewQueueRecord() const;
    /// True while the queue is paused, and while as many jobs are active as the settings allow.
    bool IsSuspendJobExecution() override;
    /// Selects the job that the scheduler names. While none may start, the cursor is at the end.
    void SelectNextJob() override;
    /// Appends the change to the journal of the list. Writes a snapshot if there is no journal yet, if the journal has
    /// outgrown its snapshot, or if it cannot be written.
    void WriteJobList(const JobListChange& change) override;
    std::vector<JobPosition> JobsNamed(const std::set<std::wstring>& names) override { return index.Named(names); }
    std::vector<JobPosition> ActiveJobs() override { return index.Active(); }

private:
    HostEngine(const FunctionManager* manager, const settings::Settings& current);

    void UpdateIndex(const JobListChange& change);
    void UpdateCandidates(const JobListChange& change);
    std::vector<std::wstring> CandidatesOf(const JobEntry& job);
    provenance::RunContext ContextOf(const JobEntry& job);
    /// Tells the runner of a job that is about to start what its request does not say.
    void WriteRunContext(const JobEntry& job);
    /// Reports a change to the scheduler, and adds to it the jobs that can never start now.
    void Schedule(JobListChange& change);
    void ReportToScheduler(JobEntry& job, std::vector<Scheduler::Stranded>& stranded);
    void ResolveEndedPredecessors(const Scheduling& scheduling, std::vector<Scheduler::Stranded>& stranded);
    void EndForScheduler(const std::wstring& id, bool hasSucceeded, std::vector<Scheduler::Stranded>& stranded);
    void EndStranded(const Scheduler::Stranded& stranded, JobListChange& change);
    void ScheduleListedJobs();
    JobPosition FirstAfter(std::int32_t number);
    ListedJob RowOf(const JobEntry& job) const;
    void ExplainWait(ListedJob& row) const;
    void UseSchedulingRules();
    void WriteSnapshot();
    [[nodiscard]] bool WriteRows(const std::wstring& snapshotId);
    std::vector<JobListInfo> DeletableJobs(const std::vector<std::wstring>& ids);
    bool IsListed(const std::wstring& id);
    void AddScriptsOfOtherLanguages();
    void AddScripts(const ScenarioDirectory& directory);
    [[nodiscard]] bool ResolvePath(std::wstring& path, std::wstring& problem);
    [[nodiscard]] bool FindInDirectories(std::wstring& name);
    [[nodiscard]] bool ResolveFileName(std::wstring& name, std::wstring& problem) const;
    void UseCataloguedId(std::wstring& path);
    std::wstring ReasonOf(const JobEntry& job) const;
    void Interrupt(JobEntry& job);

    JobIndex index;
    /// Without a value until a job needs them.
    std::optional<ReuseCandidates> candidates;
    Scheduler scheduler;
    /// The settings of which the scheduler has the rules.
    std::shared_ptr<const settings::Settings> schedulingSettings;
    /// Of the request that is being enqueued.
    Scheduling requestedScheduling;
    /// Because of a job that could not be started; ended with the next change of the list.
    std::vector<Scheduler::Stranded> strandedAtStart;
    std::vector<JobStatusInfo> strandedReports;
    QueueState state;
    /// Result of the last search, in its order. The catalogue contains more.
    std::vector<ScenarioInfo> listedScenarios;
    /// Of the scripts in that result that are not in the engine's own catalogue.
    std::vector<std::wstring> otherExtensions;
    std::vector<std::wstring> moduleProblems;
    /// Open while the list has a snapshot of this process.
    job_list_journal::Journal journal;
    /// Units: bytes.
    std::uint64_t longestJournal = 0;
    bool hasChanges = false;
    std::chrono::steady_clock::time_point lastChange;
};
