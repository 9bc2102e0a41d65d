#include "kit/JobLedger.h"

#include "text/Text.h"

#include <algorithm>
#include <stdexcept>

namespace {

/// The status with which a report marks a deleted job.
constexpr auto deleted = static_cast<JobStatus>(-1);

std::string Name(const JobLedger::Job& job) {
    return "Job " + std::to_string(job.seqId) + " (" + text::ToUtf8(job.id) + ", " + text::ToUtf8(job.mark) + ") ";
}

std::string Text(JobStatus status) {
    return JobStatusString(status);
}

template <class Jobs>
auto* FindId(Jobs& jobs, const std::wstring& id) {
    const auto job = std::find_if(jobs.begin(), jobs.end(), [&id](const auto& one) { return one.id == id; });
    return job == jobs.end() ? nullptr : &*job;
}

} // namespace

bool IsFinal(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Canceled ||
           status == JobStatus::Dequeued;
}

std::vector<std::string> OrderProblems(const std::vector<JobListInfo>& list, const std::set<std::wstring>& gone) {
    std::vector<std::string> problems;
    std::set<std::wstring> ids;
    std::int32_t last = 0;
    for (const JobListInfo& row : list) {
        const std::string name = "Job " + std::to_string(row.seqId) + " (" + text::ToUtf8(row.id) + ") ";
        if (row.seqId <= last) {
            problems.push_back(name + "is out of order in the list, behind job " + std::to_string(last));
        }
        if (!ids.insert(row.id).second) {
            problems.push_back(name + "is in the list twice");
        }
        if (gone.contains(row.id)) {
            problems.push_back(name + "was deleted, and is back in the list");
        }
        last = row.seqId;
    }
    return problems;
}

void JobLedger::Expect(bool holds, const Job& job, const std::string& problem) const {
    if (!holds) {
        object(Name(job) + problem);
    }
}

void JobLedger::EnqueueAsked(const std::wstring& mark, std::size_t count, const std::optional<UndisturbedEnd>& end) {
    unanswered[mark] = {count, end};
}

void JobLedger::EnqueueAcknowledged(const std::wstring& mark, const JobEnqueueResult& result) {
    const Request request = unanswered.at(mark);
    unanswered.erase(mark);
    if (result.requestId != mark || result.jobIds.size() != request.jobs) {
        object(text::ToUtf8(mark) + " for " + std::to_string(request.jobs) + " jobs was answered with " +
               std::to_string(result.jobIds.size()) + " as " + text::ToUtf8(result.requestId));
    }
    for (const JobIdInfo& id : result.jobIds) {
        Acknowledge(id, mark, request);
    }
}

/// The job may have been broadcast before the response.
void JobLedger::Acknowledge(const JobIdInfo& id, const std::wstring& mark, const Request& request) {
    Job job{.id = id.id};
    const Job* const known = FindId(jobs, id.id);
    if (known != nullptr) {
        job = *known;
    }
    const bool isNew = (known == nullptr || known->seqId == 0) && !gone.contains(id.id);
    job.seqId = id.seqId;
    job.mark = mark;
    job.end = request.end;
    Expect(!id.id.empty(), job, "was refused");
    Expect(isNew, job, "has an id that was handed out before");
    Expect(id.seqId > lastNumber, job, "has a number that was handed out before");
    lastNumber = id.seqId;
    ++acknowledgedJobs;
    if (known != nullptr) {
        *FindId(jobs, id.id) = job;
    } else {
        jobs.push_back(job);
        ++made;
    }
}

void JobLedger::DeletionAsked(const std::vector<std::wstring>& ids) {
    for (const std::wstring& id : ids) {
        if (Job* const job = FindId(jobs, id)) {
            job->deletionAsked = true;
        }
    }
}

void JobLedger::DeletionAcknowledged(const std::vector<std::wstring>& ids) {
    for (const std::wstring& id : ids) {
        const bool wasThere = Remove(id) || gone.contains(id);
        gone.insert(id);
        if (!wasThere || !acknowledgedDeletions.insert(id).second) {
            object("Job " + text::ToUtf8(id) + " was deleted, and was not there");
        }
    }
    for (Job& job : jobs) {
        job.deletionAsked = false; // refused: it runs
    }
}

bool JobLedger::Remove(const std::wstring& id) {
    const bool wasThere = std::erase_if(jobs, [&id](const Job& job) { return job.id == id; }) > 0;
    lastNumber = jobs.empty() ? 0 : lastNumber;
    return wasThere;
}

void JobLedger::Disturb(const std::wstring& id) {
    if (Job* const job = FindId(jobs, id)) {
        job->isDisturbed = true;
    }
}

void JobLedger::Told(const std::vector<JobStatusInfo>& changes) {
    for (const JobStatusInfo& change : changes) {
        ToldOne(change);
    }
}

void JobLedger::ToldOne(const JobStatusInfo& change) {
    if (change.status == deleted) {
        Remove(change.id);
        gone.insert(change.id);
        return;
    }
    Job* job = FindId(jobs, change.id);
    if (job == nullptr) {
        job = &jobs.emplace_back(Job{.id = change.id});
        ++made;
        Expect(!gone.contains(change.id), *job, "was deleted, and is " + Text(change.status));
    }
    if (IsFinal(job->told)) {
        Expect(change.status == job->told, *job,
               "has ended as " + Text(job->told) + ", and is " + Text(change.status) + " again");
        return;
    }
    job->told = change.status;
    job->toldProgress = change.progress;
    TakeEnd(*job);
}

void JobLedger::TakeEnd(const Job& job) {
    if (!IsFinal(job.told)) {
        return;
    }
    ++ends[Text(job.told)];
    if (job.end && !job.isDisturbed) {
        Expect(job.told == job.end->status, job,
               "of the kind " + job.end->kind + " has ended undisturbed as " + Text(job.told));
    }
}

const JobLedger::Job& JobLedger::JobOf(const std::wstring& id) const {
    const Job* const job = FindId(jobs, id);
    return job != nullptr ? *job : throw std::runtime_error("no job " + text::ToUtf8(id));
}

std::vector<std::wstring> JobLedger::Ids(const Choice& choice) const {
    std::vector<std::wstring> ids;
    for (const Job& job : jobs) {
        if (choice(job)) {
            ids.push_back(job.id);
        }
    }
    return ids;
}

void JobLedger::Compare(const std::vector<JobListInfo>& list) const {
    for (const Job& job : jobs) {
        CompareJob(job, FindId(list, job.id));
    }
    CompareUnknown(list);
    for (const std::string& problem : OrderProblems(list, gone)) {
        object(problem);
    }
}

void JobLedger::CompareJob(const Job& job, const JobListInfo* row) const {
    if (row == nullptr) {
        Expect(job.deletionAsked, job, "is lost");
        return;
    }
    if (job.seqId != 0) {
        Expect(row->seqId == job.seqId, job, "is number " + std::to_string(row->seqId) + " in the list");
        Expect(row->extraText == job.mark, job, "is of " + text::ToUtf8(row->extraText) + " in the list");
    }
    Expect(!IsFinal(job.told) || StatusAtStart(row->status) == job.told, job,
           "has ended as " + Text(job.told) + ", and is " + Text(row->status) + " in the list");
    Expect(job.told != JobStatus::Dequeued || row->startTime.empty(), job, "was cancelled before it started, and did");
}

/// An unanswered request has created all of its jobs or none.
void JobLedger::CompareUnknown(const std::vector<JobListInfo>& list) const {
    std::map<std::wstring, std::size_t> found;
    for (const JobListInfo& row : list) {
        const Job* const job = FindId(jobs, row.id);
        const bool isAnothers = job != nullptr && others == Others::Some && !unanswered.contains(row.extraText);
        if (job == nullptr || (job->seqId == 0 && !isAnothers)) {
            ++found[row.extraText];
        }
    }
    for (const auto& [mark, count] : found) {
        const auto request = unanswered.find(mark);
        if (request == unanswered.end()) {
            object(std::to_string(count) +
                   " jobs of the list were neither asked for nor told of: " + text::ToUtf8(mark));
        } else if (request->second.jobs != count) {
            object(text::ToUtf8(mark) + " is in the list in part");
        }
    }
}

void JobLedger::CompareAll(const std::vector<JobListInfo>& list) const {
    Compare(list);
    for (const JobListInfo& row : list) {
        const Job* const job = FindId(jobs, row.id);
        if (job != nullptr) {
            Expect(row.status == job->told, *job,
                   "is " + Text(row.status) + " in the list, and was told to be " + Text(job->told));
        }
    }
}

JobStatus JobLedger::StatusAtStart(JobStatus listed) const {
    const bool waits = (listed == JobStatus::Queued && restart != Restart::Cancel) ||
                       (listed == JobStatus::Running && restart == Restart::RunAgain);
    return waits ? JobStatus::Queued : IsFinal(listed) ? listed : JobStatus::Canceled;
}

void JobLedger::Adopt(const std::vector<JobListInfo>& list) {
    jobs.clear();
    for (const JobListInfo& row : list) {
        jobs.push_back({.id = row.id,
                        .seqId = row.seqId,
                        .mark = row.extraText,
                        .told = row.status,
                        .toldProgress = row.progress});
    }
    unanswered.clear();
    lastNumber = jobs.empty() ? 0 : jobs.back().seqId;
}
