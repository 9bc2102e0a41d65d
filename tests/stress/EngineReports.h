#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

/// What an engine under stress has told about its jobs, from any thread, and whether that can be true of all of them:
/// no job lost, none twice, each with one fate.
class EngineReports {
public:
    // What operations of the engine reported
    void Enqueued(const JobEnqueueResult& result);
    void Executed(const std::vector<JobStatusInfo>& updated);
    void Cancelled(const std::vector<JobStatusInfo>& cancelled);
    void Ended(const std::vector<JobStatusInfo>& changed);
    void Deleted(const std::vector<std::wstring>& ids);
    /// The function module was told to run a job.
    void Run(const std::wstring& id);

    /// Ids of jobs that have been enqueued, the latest last.
    std::vector<std::wstring> LatestIds(std::size_t count) const;

    /// What is wrong with all that was told, now that every job has come to its end and `listed` is left.
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

/// Looks at the whole list of an engine again and again, and at what it has become since the last time. One thread.
class ListWatch {
public:
    /// What is wrong with the list; empty when nothing is.
    std::string Look(const std::vector<JobListInfo>& list);

private:
    std::map<std::wstring, JobStatus> seen;
    std::set<std::wstring> gone;
};
