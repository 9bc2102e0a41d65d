#include "JobBook.h"

#include "text/Text.h"

namespace {

bool IsEnd(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Dequeued ||
           status == JobStatus::Canceled;
}

/// How a report says that a job is no longer in the list.
constexpr auto deleted = static_cast<JobStatus>(-1);

} // namespace

bool HasEnded(const JobBook::Job& job) {
    return IsEnd(job.status);
}

bool IsWaiting(const JobBook::Job& job) {
    return job.status == JobStatus::Queued;
}

bool IsRunning(const JobBook::Job& job) {
    return job.status == JobStatus::Running;
}

void JobBook::Add(const std::vector<JobIdInfo>& added, const JobKind& kind) {
    for (const JobIdInfo& job : added) {
        made += jobs.contains(job.id) ? 0U : 1U;
        jobs[job.id].kind = &kind;
    }
}

void JobBook::Take(const std::vector<JobStatusInfo>& updates) {
    for (const JobStatusInfo& update : updates) {
        TakeOne(update);
    }
}

void JobBook::TakeOne(const JobStatusInfo& update) {
    if (update.status == deleted) {
        jobs.erase(update.id);
        return;
    }
    const bool isNew = !jobs.contains(update.id);
    Job& job = jobs[update.id];
    made += isNew ? 1U : 0U;
    if (HasEnded(job) && update.status != job.status) {
        Object(update.id, std::string("has ended, and is ") + JobStatusString(update.status) + " again");
    }
    if (!HasEnded(job) && IsEnd(update.status)) {
        TakeEnd(update, job);
    }
    job.status = update.status;
}

void JobBook::TakeEnd(const JobStatusInfo& update, const Job& job) {
    ++ends[JobStatusString(update.status)];
    if (job.kind != nullptr && !job.isDisturbed && update.status != job.kind->end) {
        Object(update.id, std::string("of the kind ") + job.kind->name + " has ended undisturbed as " +
                              JobStatusString(update.status));
    }
}

void JobBook::Disturb(const std::wstring& id) {
    jobs[id].isDisturbed = true;
}

void JobBook::DisturbStarted(const std::vector<JobListInfo>& listed) {
    for (const JobListInfo& row : listed) {
        const auto job = jobs.find(row.id);
        if (job != jobs.end() && !row.startTime.empty() && !HasEnded(job->second)) {
            job->second.isDisturbed = true;
        }
    }
}

void JobBook::Compare(const std::vector<JobListInfo>& listed) {
    for (const JobListInfo& row : listed) {
        const auto job = jobs.find(row.id);
        if (job == jobs.end()) {
            Object(row.id, "is in the list, and nobody was told of it");
        } else if (job->second.status != row.status) {
            Object(row.id, std::string("is ") + JobStatusString(row.status) + " in the list, and was told to be " +
                               JobStatusString(job->second.status));
        }
    }
    if (listed.size() < jobs.size()) {
        problems.push_back("the list has " + std::to_string(listed.size()) + " jobs of " + std::to_string(jobs.size()));
    }
}

std::vector<std::wstring> JobBook::Ids(const Choice& choice) const {
    std::vector<std::wstring> ids;
    for (const auto& [id, job] : jobs) {
        if (choice(job)) {
            ids.push_back(id);
        }
    }
    return ids;
}

void JobBook::Object(const std::wstring& id, const std::string& problem) {
    problems.push_back("Job " + text::ToUtf8(id) + " " + problem);
}
