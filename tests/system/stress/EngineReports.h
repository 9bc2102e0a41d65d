#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

/// Records reports of an engine under stress, from any thread, and checks them: no job lost or duplicated, each with
/// one fate.
class EngineReports {
public:
    // Reports of the engine's operations
    void Enqueued(const JobEnqueueResult& result);
    void Executed(const std::vector<JobStatusInfo>& updated);
    void Cancelled(const std::vector<JobStatusInfo>& cancelled);
    void Ended(const std::vector<JobStatusInfo>& changed);
    void Deleted(const std::vector<std::wstring>& ids);
    /// The function module was asked to run a job.
    void Run(const std::wstring& id);

    /// Ids of enqueued jobs, the latest last.
    std::vector<std::wstring> LatestIds(std::size_t count) const;

    /// Contradictions in the reports, after all jobs have ended and `listed` remains.
    std::vector<std::string> Problems(const std::vector<JobListInfo>& listed) const;

private:
    struct Job {
        int enqueued = 0;
        int runs = 0;
        int startReports = 0;
        int failedStartReports = 0;
        int dequeued = 0;
        int cancelling = 0;
        int ended = 0;
        int deleted = 0;
        int strange = 0;
        JobStatus last = JobStatus::Queued;
    };

    static std::string ProblemOf(const Job& job, const JobListInfo* listed);

    mutable std::mutex mutex;
    std::map<std::wstring, Job> jobs;
    std::vector<std::wstring> order;
};

/// Compares successive lists of an engine. One thread.
class ListWatch {
public:
    /// The error in the list; empty if there is none.
    std::string Look(const std::vector<JobListInfo>& list);

private:
    std::map<std::wstring, JobStatus> seen;
    std::set<std::wstring> gone;
};
