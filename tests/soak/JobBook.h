#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "JobKinds.h"

#include <cstddef>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

/// What the long run knows of the host's jobs, from the answers and updates that it is sent. Each contradiction becomes
/// a line of `problems`.
class JobBook {
public:
    struct Job {
        /// Null for a job that somebody else enqueued.
        const JobKind* kind = nullptr;
        JobStatus status = JobStatus::Queued;
        /// Cancelled, or hit by a kill: then it may end in any way.
        bool isDisturbed = false;
    };

    /// Jobs that a request made.
    void Add(const std::vector<JobIdInfo>& made, const JobKind& kind);
    /// What the host told of jobs.
    void Take(const std::vector<JobStatusInfo>& updates);
    void Disturb(const std::wstring& id);
    /// A process was killed just before the host gave this list: it belonged to a job that ran then, or has ended
    /// meanwhile.
    void DisturbStarted(const std::vector<JobListInfo>& listed);
    /// The host's list holds the same jobs in the same states.
    void Compare(const std::vector<JobListInfo>& listed);

    using Choice = std::function<bool(const Job&)>;
    std::vector<std::wstring> Ids(const Choice& choice) const;
    std::size_t Count(const Choice& choice) const { return Ids(choice).size(); }

    std::size_t Made() const { return made; }
    const std::map<std::string, int>& Ends() const { return ends; }
    const std::vector<std::string>& Problems() const { return problems; }

private:
    void TakeOne(const JobStatusInfo& update);
    void TakeEnd(const JobStatusInfo& update, const Job& job);
    void Object(const std::wstring& id, const std::string& problem);

    std::map<std::wstring, Job> jobs;
    std::size_t made = 0;
    std::map<std::string, int> ends;
    std::vector<std::string> problems;
};

bool HasEnded(const JobBook::Job& job);
bool IsWaiting(const JobBook::Job& job);
bool IsRunning(const JobBook::Job& job);
