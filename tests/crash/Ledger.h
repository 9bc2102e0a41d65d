#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace crash {

/// What hosts have acknowledged, and what was asked of them and never answered. What a list must not contradict.
class Ledger {
public:
    struct Job {
        std::wstring id;
        std::int32_t seqId = 0;
        /// What was put into the request that made it.
        std::wstring mark;
        JobStatus told = JobStatus::Queued;
        std::int32_t toldProgress = 0;
        bool deletionAsked = false;
    };

    /// A mark for the next request, which no other has.
    std::wstring NewMark() { return L"request " + std::to_wstring(++lastMark); }

    void EnqueueAsked(const std::wstring& mark, std::size_t jobs);
    void EnqueueAcknowledged(const std::wstring& mark, const JobEnqueueResult& result);
    void DeletionAsked(const std::vector<std::wstring>& ids);
    void DeletionAcknowledged(const std::vector<std::wstring>& ids);
    void Told(const std::vector<JobStatusInfo>& changes);

    /// Compares a list with all this; failures go to GoogleTest.
    void Compare(const std::vector<JobListInfo>& list) const;
    /// Takes the list of a host that has just started as what holds from now on.
    void Adopt(const std::vector<JobListInfo>& list);

    const std::vector<Job>& Jobs() const { return jobs; }
    /// Throws when there is none.
    const Job& JobOf(const std::wstring& id) const;
    std::size_t AcknowledgedJobs() const { return acknowledgedJobs; }
    std::size_t AcknowledgedDeletions() const { return gone.size(); }

private:
    void Acknowledge(const Job& job);
    void CompareKnown(const std::vector<JobListInfo>& list) const;
    void CompareOrder(const std::vector<JobListInfo>& list) const;
    void CompareUnknown(const std::vector<JobListInfo>& list) const;

    int lastMark = 0;
    std::size_t acknowledgedJobs = 0;
    /// The highest number that the host has handed out or found; 0 when no job is left: the numbering starts again
    /// then.
    std::int32_t lastNumber = 0;
    /// In the order of the list.
    std::vector<Job> jobs;
    /// The ids of jobs whose deletion was acknowledged.
    std::set<std::wstring> gone;
    /// Requests that were not answered, with the number of their jobs: all of them may have come to be, or none.
    std::map<std::wstring, std::size_t> unanswered;
};

} // namespace crash
