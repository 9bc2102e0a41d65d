#pragma once

#include "CommonControllerLib/JobEntryManagerBase.h"
#include "controller_host/JobIndex.h"

#include "formats/JobListFile.h"
#include "formats/JobListJournal.h"

#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// The job engine of a host that waits for process handles instead of polling.
class HostEngine : public JobEntryManagerBase {
public:
    /// Reads the job list; the journal that a killed host left counts as a change. A job that was dequeued stays
    /// `Dequeued`; only `DeleteOldJobsDurably` deletes old jobs. `manager` is not owned and must outlive the engine.
    explicit HostEngine(const FunctionManager* manager);

    /// The process handles of all active jobs. The jobs own them; they are valid until the next `CheckUpdate`.
    std::vector<void*> ActiveProcesses();

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

    /// Searches the scenario directories of the settings and returns the scenarios found.
    std::vector<ScenarioInfo> UpdateCatalogue();

    /// The problems found in the directories searched last; see `FindScenarioProblems`.
    std::vector<std::wstring> ScenarioProblems() const;

    /// Resolves a user's name of a scenario to the name by which the engine finds it. An id is unchanged. An absolute
    /// path, a path relative to a scenario directory, or the name of a file anywhere below one becomes the scenario's
    /// id if it is catalogued, otherwise an absolute path. Searches the directories again if the name is not found at
    /// first. Returns the problem; empty on success.
    [[nodiscard]] std::wstring ResolveScenarioName(std::wstring& name);

    /// Returns the parameter sets of a catalogued scenario in `sets`. Reports an unknown or missing scenario or a
    /// broken description as a problem, in contrast to a scenario without sets. Returns the problem; empty on success.
    [[nodiscard]] std::wstring ReadParameterSets(const std::wstring& scenarioId,
                                                 std::vector<ScenarioParameterSetInfo>& sets);

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
    /// True while as many jobs are active as the settings allow. Also true while a job is active and none is queued
    /// after the cursor: moving the cursor to the end would only cause another write of the list.
    bool IsSuspendJobExecution() override;
    /// Appends the change to the journal of the list. Writes a snapshot if there is no journal yet, if the journal has
    /// outgrown its snapshot, or if it cannot be written.
    void WriteJobList(const JobListChange& change) override;
    std::vector<JobPosition> JobsNamed(const std::set<std::wstring>& names) override { return index.Named(names); }
    std::vector<JobPosition> ActiveJobs() override { return index.Active(); }

private:
    void UpdateIndex(const JobListChange& change);
    void WriteSnapshot();
    [[nodiscard]] bool WriteRows(const std::wstring& snapshotId);
    std::vector<JobListInfo> DeletableJobs(const std::vector<std::wstring>& ids);
    bool IsListed(const std::wstring& id);
    std::wstring ResolvePath(std::wstring& path);
    bool FindInDirectories(std::wstring& name);
    std::wstring ResolveFileName(std::wstring& name) const;
    void UseCataloguedId(std::wstring& path);
    std::wstring ReasonOf(const JobEntry& job) const;

    JobIndex index;
    /// Result of the last search, in its order. The catalogue contains more.
    std::vector<ScenarioInfo> listedScenarios;
    std::vector<std::wstring> moduleProblems;
    /// Open while the list has a snapshot of this process.
    job_list_journal::Journal journal;
    /// Units: bytes.
    std::uint64_t longestJournal = 0;
    bool hasChanges = false;
    std::chrono::steady_clock::time_point lastChange;
};
