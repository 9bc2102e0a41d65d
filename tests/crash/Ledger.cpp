#include "crash/Ledger.h"

#include "text/Text.h"

#include <algorithm>
#include <stdexcept>

#include <gtest/gtest.h>

namespace crash {
namespace {

bool HasEnded(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Canceled ||
           status == JobStatus::Dequeued;
}

/// What a host that finds this status in its list takes it for; the file follows with the next change.
JobStatus StatusAtStart(JobStatus listed) {
    return HasEnded(listed) ? listed : JobStatus::Canceled;
}

std::string Name(const Ledger::Job& job) {
    return "job " + std::to_string(job.seqId) + " (" + text::ToUtf8(job.id) + ", " + text::ToUtf8(job.mark) + ")";
}

template <class Jobs>
auto FindId(Jobs& jobs, const std::wstring& id) {
    return std::find_if(jobs.begin(), jobs.end(), [&id](const auto& job) { return job.id == id; });
}

} // namespace

void Ledger::EnqueueAsked(const std::wstring& mark, std::size_t count) {
    unanswered[mark] = count;
}

void Ledger::EnqueueAcknowledged(const std::wstring& mark, const JobEnqueueResult& result) {
    EXPECT_EQ(result.requestId, mark);
    EXPECT_EQ(result.jobIds.size(), unanswered.at(mark));
    unanswered.erase(mark);
    for (const JobIdInfo& id : result.jobIds) {
        Acknowledge({.id = id.id, .seqId = id.seqId, .mark = mark});
    }
}

void Ledger::Acknowledge(const Job& job) {
    EXPECT_FALSE(job.id.empty()) << "a job was refused";
    EXPECT_TRUE(FindId(jobs, job.id) == jobs.end() && !gone.contains(job.id)) << Name(job) << ": id handed out twice";
    EXPECT_GT(job.seqId, lastNumber) << Name(job) << ": number handed out twice";
    lastNumber = job.seqId;
    jobs.push_back(job);
    ++acknowledgedJobs;
}

void Ledger::DeletionAsked(const std::vector<std::wstring>& ids) {
    for (Job& job : jobs) {
        job.deletionAsked = job.deletionAsked || std::find(ids.begin(), ids.end(), job.id) != ids.end();
    }
}

void Ledger::DeletionAcknowledged(const std::vector<std::wstring>& ids) {
    for (const std::wstring& id : ids) {
        EXPECT_EQ(std::erase_if(jobs, [&id](const Job& job) { return job.id == id; }), 1U);
        gone.insert(id);
    }
    for (Job& job : jobs) {
        job.deletionAsked = false; // refused: it runs
    }
    lastNumber = jobs.empty() ? 0 : lastNumber;
}

void Ledger::Told(const std::vector<JobStatusInfo>& changes) {
    for (const JobStatusInfo& change : changes) {
        const auto job = FindId(jobs, change.id);
        if (job != jobs.end() && !HasEnded(job->told)) {
            job->told = change.status;
            job->toldProgress = change.progress;
        }
    }
}

const Ledger::Job& Ledger::JobOf(const std::wstring& id) const {
    const auto job = FindId(jobs, id);
    return job != jobs.end() ? *job : throw std::runtime_error("no job " + text::ToUtf8(id));
}

void Ledger::Compare(const std::vector<JobListInfo>& list) const {
    CompareKnown(list);
    CompareUnknown(list);
    CompareOrder(list);
}

void Ledger::CompareKnown(const std::vector<JobListInfo>& list) const {
    for (const Job& job : jobs) {
        const auto row = FindId(list, job.id);
        if (row == list.end()) {
            EXPECT_TRUE(job.deletionAsked) << Name(job) << " is lost";
            continue;
        }
        EXPECT_EQ(row->seqId, job.seqId) << Name(job);
        EXPECT_EQ(row->extraText, job.mark) << Name(job);
        if (HasEnded(job.told)) {
            EXPECT_EQ(StatusAtStart(row->status), job.told) << Name(job) << " had ended otherwise";
        }
        if (job.told == JobStatus::Dequeued) {
            EXPECT_EQ(row->startTime, L"") << Name(job) << " was cancelled before it started";
        }
    }
}

/// A list is in the order of its numbers, so each of them and each id is there once.
void Ledger::CompareOrder(const std::vector<JobListInfo>& list) const {
    std::set<std::wstring> ids;
    std::int32_t last = 0;
    for (const JobListInfo& row : list) {
        EXPECT_GT(row.seqId, last) << "numbers out of order";
        last = row.seqId;
        EXPECT_TRUE(ids.insert(row.id).second) << "an id is there twice";
        EXPECT_FALSE(gone.contains(row.id)) << "job " << row.seqId << " is back";
    }
}

/// Requests without an answer have made all of their jobs or none.
void Ledger::CompareUnknown(const std::vector<JobListInfo>& list) const {
    std::map<std::wstring, std::size_t> made;
    for (const JobListInfo& row : list) {
        if (FindId(jobs, row.id) == jobs.end()) {
            ++made[row.extraText];
        }
    }
    for (const auto& [mark, count] : made) {
        const auto request = unanswered.find(mark);
        EXPECT_TRUE(request != unanswered.end()) << "jobs that nobody asked for: " << text::ToUtf8(mark);
        EXPECT_TRUE(request == unanswered.end() || request->second == count) << text::ToUtf8(mark) << " in part";
    }
}

void Ledger::Adopt(const std::vector<JobListInfo>& list) {
    jobs.clear();
    for (const JobListInfo& row : list) {
        jobs.push_back({row.id, row.seqId, row.extraText, row.status, row.progress, false});
    }
    unanswered.clear();
    lastNumber = jobs.empty() ? 0 : jobs.back().seqId;
}

} // namespace crash
