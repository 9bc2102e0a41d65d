#pragma once

#include "CommonControllerLib/JobEntryManagerBase.h"

#include <set>
#include <string>
#include <vector>

/// The job engine of a host that waits for its processes instead of looking at them again and again.
class HostEngine : public JobEntryManagerBase {
public:
    /// Reads the job list. A job that was taken out of the queue stays `Dequeued`; old jobs are deleted only by
    /// `DeleteOldJobsDurably`. `manager` is not owned and must outlive the engine.
    explicit HostEngine(const FunctionManager* manager)
        : JobEntryManagerBase(manager, {.keepsDequeued = true, .deletesOldJobs = false}) {}

    /// The handles of the processes of all active jobs. They stay the jobs' own and are valid until the next
    /// `CheckUpdate`.
    std::vector<void*> ActiveProcesses();

    /// True while a job is running or being cancelled, with a process or without.
    bool HasActiveJobs();

    /// Reports on the jobs that an enqueue request made, in list order; rejected input sets are left out.
    std::vector<JobStatusInfo> StatusOf(const std::vector<JobIdInfo>& jobs);

    /// Reports with `unlistedStatus` on those of `jobs` that are no longer in the list.
    std::vector<JobStatusInfo> NoLongerListed(const std::vector<JobListInfo>& jobs);

    /// `DeleteJobs` that survives a sudden end in the middle: the next host then calls `FinishDeletions`. One thread at
    /// a time. Always true.
    bool DeleteJobsDurably(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted);

    /// Searches the scenario directories of the settings; what was found.
    std::vector<ScenarioInfo> UpdateCatalogue();

    /// What is broken in the directories that were searched last, and where; see `FindScenarioProblems`.
    std::vector<std::wstring> ScenarioProblems() const;

    /// Replaces what people call a scenario by what the engine finds it by: an id stays; an absolute path, a path below
    /// a scenario directory, or the name of a file anywhere below one becomes the scenario's id where the catalogue
    /// lists it, else an absolute path. The directories are searched anew for what is not found at first. Returns what
    /// is wrong; empty when nothing is.
    [[nodiscard]] std::wstring ResolveScenarioName(std::wstring& name);

    /// Gives the parameter sets of a catalogued scenario, and tells one that is unknown, gone or has a broken
    /// description from one that offers no sets. Returns what is wrong; empty when nothing is.
    [[nodiscard]] std::wstring ReadParameterSets(const std::wstring& scenarioId,
                                                 std::vector<ScenarioParameterSetInfo>& sets);

    /// Leaves the reason of each of these jobs that has failed without a word of its scenario where people find it
    /// (`FailureReasons`). Called before they are told of the failure.
    void ExplainFailures(const std::vector<JobStatusInfo>& changed);
    /// What to add to the reason of jobs that fail because no function module takes them.
    void SetModuleProblems(std::vector<std::wstring> problems) { moduleProblems = std::move(problems); }
    /// Removes the reasons of jobs that are listed no more.
    void ForgetFailures();

    /// Deletes what an earlier host was deleting when it was interrupted.
    void FinishDeletions();

    /// Deletes the jobs beyond the configured age, durably. Before any other thread uses the engine.
    void DeleteOldJobsDurably();

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override;
    /// True while as many jobs are active as the settings allow; and while any is and none is queued behind the cursor,
    /// because moving that to the end would only write the list once more.
    bool IsSuspendJobExecution() override;
    /// Writes the rows as they stand in the list, without a copy of them.
    void WriteJobList() override;

private:
    std::vector<JobListInfo> DeletableJobs(const std::vector<std::wstring>& ids);
    std::set<std::wstring> ListedIds();
    std::wstring ResolvePath(std::wstring& path);
    bool FindInDirectories(std::wstring& name);
    std::wstring ResolveFileName(std::wstring& name) const;
    void UseCataloguedId(std::wstring& path);
    std::wstring ReasonOf(const JobEntry& job) const;

    /// What the last search found, in its order; the catalogue keeps more.
    std::vector<ScenarioInfo> listedScenarios;
    std::vector<std::wstring> moduleProblems;
};
