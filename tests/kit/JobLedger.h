#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// True for an ended job. A separate definition, so that the tests do not depend on the code under test.
bool IsFinal(JobStatus status);

/// Errors in a list independent of earlier reports: numbers in order, numbers and ids unique, none of the jobs in
/// `gone`.
std::vector<std::string> OrderProblems(const std::vector<JobListInfo>& list, const std::set<std::wstring>& gone);

/// Records what hosts have acknowledged and reported, and unanswered requests. Later reports and lists that contradict
/// these are problems. One thread.
class JobLedger {
public:
    /// The status in which an undisturbed job ends; nothing if it does not end by itself.
    struct UndisturbedEnd {
        std::string kind;
        std::optional<JobStatus> status;
    };

    struct Job {
        std::wstring id;
        /// 0 for a job that was reported but not acknowledged: created by others, or its response is still to come.
        std::int32_t seqId = 0;
        /// The mark of the request that created it.
        std::wstring mark{};
        JobStatus told = JobStatus::Queued;
        std::int32_t toldProgress = 0;
        bool deletionAsked = false;
        std::optional<UndisturbedEnd> end{};
        /// Cancelled or killed: it may end in any way.
        bool isDisturbed = false;
    };

    /// Whether other front ends may create jobs.
    enum class Others { None, Some };
    /// What a host does with the jobs that an earlier one has left: it cancels them, keeps those that waited, or also
    /// runs those again that ran.
    enum class Restart { Cancel, KeepWaiting, RunAgain };
    /// Receives a problem, as a sentence.
    using Object = std::function<void(const std::string& problem)>;
    using Choice = std::function<bool(const Job&)>;

    JobLedger(Others otherClients, Object objection, Restart restartRule = Restart::Cancel)
        : others(otherClients), object(std::move(objection)), restart(restartRule) {}

    /// A unique mark for the next request.
    std::wstring NewMark() { return L"request " + std::to_wstring(++lastMark); }

    void EnqueueAsked(const std::wstring& mark, std::size_t jobs, const std::optional<UndisturbedEnd>& end = {});
    void EnqueueAcknowledged(const std::wstring& mark, const JobEnqueueResult& result);
    void DeletionAsked(const std::vector<std::wstring>& ids);
    void DeletionAcknowledged(const std::vector<std::wstring>& ids);
    void Disturb(const std::wstring& id);
    /// Changes of jobs reported by a host, in order.
    void Told(const std::vector<JobStatusInfo>& changes);

    /// Compares a list, possibly one that the next host will find, with the record.
    void Compare(const std::vector<JobListInfo>& list) const;
    /// The same for a live host that has reported everything: its jobs are as reported.
    void CompareAll(const std::vector<JobListInfo>& list) const;
    /// Takes the list of a newly started host as the new state.
    void Adopt(const std::vector<JobListInfo>& list);
    /// The status that a starting host assigns to a job with this listed status; the file follows at the next change.
    JobStatus StatusAtStart(JobStatus listed) const;

    /// In the order of the list.
    const std::vector<Job>& Jobs() const { return jobs; }
    /// Throws if there is none.
    const Job& JobOf(const std::wstring& id) const;
    std::vector<std::wstring> Ids(const Choice& choice) const;
    std::size_t Count(const Choice& choice) const { return Ids(choice).size(); }

    /// Jobs that were acknowledged or reported.
    std::size_t Made() const { return made; }
    std::size_t AcknowledgedJobs() const { return acknowledgedJobs; }
    std::size_t AcknowledgedDeletions() const { return acknowledgedDeletions.size(); }
    /// The number of ended jobs by reported status.
    const std::map<std::string, int>& Ends() const { return ends; }

private:
    struct Request {
        std::size_t jobs;
        std::optional<UndisturbedEnd> end;
    };

    void Expect(bool holds, const Job& job, const std::string& problem) const;
    void Acknowledge(const JobIdInfo& made, const std::wstring& mark, const Request& request);
    void ToldOne(const JobStatusInfo& change);
    void TakeEnd(const Job& job);
    /// True if the job was known.
    bool Remove(const std::wstring& id);
    void CompareJob(const Job& job, const JobListInfo* row) const;
    void CompareUnknown(const std::vector<JobListInfo>& list) const;

    const Others others;
    const Object object;
    const Restart restart;
    int lastMark = 0;
    std::size_t made = 0;
    std::size_t acknowledgedJobs = 0;
    /// The highest number that the host has used or found; 0 if no job is left, because numbering restarts then.
    std::int32_t lastNumber = 0;
    std::vector<Job> jobs;
    /// The ids of jobs reported or acknowledged as deleted.
    std::set<std::wstring> gone;
    std::set<std::wstring> acknowledgedDeletions;
    std::map<std::string, int> ends;
    /// Unanswered requests: all of their jobs may exist, or none.
    std::map<std::wstring, Request> unanswered;
};
