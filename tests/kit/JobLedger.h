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

/// True for a job that neither waits nor runs any more. The tests' own word for it: what they check does not decide it.
bool IsFinal(JobStatus status);

/// What is wrong with a list whatever was told before: it is in the order of its numbers, so that each number and each
/// id is there once, and has nothing of what is `gone`.
std::vector<std::string> OrderProblems(const std::vector<JobListInfo>& list, const std::set<std::wstring>& gone);

/// What hosts have acknowledged and told of jobs, and what was asked of them and never answered. Whatever contradicts
/// that, in what they tell next or in a list, is a problem. One thread.
class JobLedger {
public:
    /// How a job ends that nobody disturbs; nothing: not by itself.
    struct UndisturbedEnd {
        std::string kind;
        std::optional<JobStatus> status;
    };

    struct Job {
        std::wstring id;
        /// 0 for a job that was told of and not acknowledged: somebody else's, or one whose answer is still to come.
        std::int32_t seqId = 0;
        /// What was put into the request that made it.
        std::wstring mark{};
        JobStatus told = JobStatus::Queued;
        std::int32_t toldProgress = 0;
        bool deletionAsked = false;
        std::optional<UndisturbedEnd> end{};
        /// Cancelled, or hit by a kill: then it may end in any way.
        bool isDisturbed = false;
    };

    /// Who else may have jobs made.
    enum class Others { None, Some };
    /// Takes a problem, a sentence.
    using Object = std::function<void(const std::string& problem)>;
    using Choice = std::function<bool(const Job&)>;

    JobLedger(Others otherClients, Object objection) : others(otherClients), object(std::move(objection)) {}

    /// A mark for the next request, which no other has.
    std::wstring NewMark() { return L"request " + std::to_wstring(++lastMark); }

    void EnqueueAsked(const std::wstring& mark, std::size_t jobs, const std::optional<UndisturbedEnd>& end = {});
    void EnqueueAcknowledged(const std::wstring& mark, const JobEnqueueResult& result);
    void DeletionAsked(const std::vector<std::wstring>& ids);
    void DeletionAcknowledged(const std::vector<std::wstring>& ids);
    void Disturb(const std::wstring& id);
    /// What a host tells of jobs, in its order.
    void Told(const std::vector<JobStatusInfo>& changes);

    /// Compares a list, which may be one that the next host will find, with all this.
    void Compare(const std::vector<JobListInfo>& list) const;
    /// The same for the list of a host that lives and has told everything: its jobs are as they were told.
    void CompareAll(const std::vector<JobListInfo>& list) const;
    /// Takes the list of a host that has just started as what holds from now on.
    void Adopt(const std::vector<JobListInfo>& list);

    /// In the order of the list.
    const std::vector<Job>& Jobs() const { return jobs; }
    /// Throws when there is none.
    const Job& JobOf(const std::wstring& id) const;
    std::vector<std::wstring> Ids(const Choice& choice) const;
    std::size_t Count(const Choice& choice) const { return Ids(choice).size(); }

    /// Jobs that were acknowledged, or told of.
    std::size_t Made() const { return made; }
    std::size_t AcknowledgedJobs() const { return acknowledgedJobs; }
    std::size_t AcknowledgedDeletions() const { return acknowledgedDeletions.size(); }
    /// How many jobs were told to have ended so.
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
    /// True when the job was known.
    bool Remove(const std::wstring& id);
    void CompareJob(const Job& job, const JobListInfo* row) const;
    void CompareUnknown(const std::vector<JobListInfo>& list) const;

    const Others others;
    const Object object;
    int lastMark = 0;
    std::size_t made = 0;
    std::size_t acknowledgedJobs = 0;
    /// The highest number that the host has handed out or found; 0 when no job is left: the numbering starts again
    /// then.
    std::int32_t lastNumber = 0;
    std::vector<Job> jobs;
    /// The ids of jobs that were told or acknowledged to be deleted.
    std::set<std::wstring> gone;
    std::set<std::wstring> acknowledgedDeletions;
    std::map<std::string, int> ends;
    /// Requests that were not answered: all of their jobs may have come to be, or none.
    std::map<std::wstring, Request> unanswered;
};
