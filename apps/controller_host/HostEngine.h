#pragma once

#include "engine/JobEntryManagerBase.h"

#include <set>
#include <string>
#include <vector>

/// What a status report says of a job that is not in the list.
inline constexpr JobStatus unknownStatus = static_cast<JobStatus>(-1);

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

    /// Reports with `unknownStatus` on those of `jobs` that are no longer in the list.
    std::vector<JobStatusInfo> NoLongerListed(const std::vector<JobListInfo>& jobs);

    /// `DeleteJobs` that survives a sudden end in the middle: the next host then calls `FinishDeletions`. One thread at
    /// a time. Always true.
    bool DeleteJobsDurably(std::vector<std::wstring>& ids, std::vector<std::wstring>& deleted);

    /// Deletes what an earlier host was deleting when it was interrupted.
    void FinishDeletions();

    /// Deletes the jobs beyond the configured age, durably. Before any other thread uses the engine.
    void DeleteOldJobsDurably();

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override;

private:
    std::vector<JobListInfo> DeletableJobs(const std::vector<std::wstring>& ids);
    std::set<std::wstring> ListedIds();
};
