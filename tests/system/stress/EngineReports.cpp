#include "system/stress/EngineReports.h"

#include "kit/JobLedger.h"
#include "text/Text.h"

#include <algorithm>

namespace {

bool IsActive(JobStatus status) {
    return status == JobStatus::Running || status == JobStatus::Canceling;
}

bool HasRun(JobStatus status) {
    return IsFinal(status) && status != JobStatus::Dequeued;
}

/// Whether a job can get from one status to another in any number of steps.
bool IsReachable(JobStatus from, JobStatus to) {
    return from == to || from == JobStatus::Queued ||
           (from == JobStatus::Running && (HasRun(to) || to == JobStatus::Canceling)) ||
           (from == JobStatus::Canceling && HasRun(to));
}

std::string Describe(const std::wstring& id, const std::string& problem) {
    return "job " + text::ToUtf8(id) + ": " + problem;
}

std::string StatusText(JobStatus status) {
    return std::to_string(static_cast<int>(status));
}

} // namespace

void EngineReports::Enqueued(const JobEnqueueResult& result) {
    const std::lock_guard lock(mutex);
    for (const JobIdInfo& job : result.jobIds) {
        ++jobs[job.id].enqueued;
        order.push_back(job.id);
    }
}

void EngineReports::Executed(const std::vector<JobStatusInfo>& updated) {
    const std::lock_guard lock(mutex);
    for (const JobStatusInfo& report : updated) {
        Job& job = jobs[report.id];
        job.startReports += report.status == JobStatus::Running ? 1 : 0;
        job.failedStartReports += report.status == JobStatus::Failed ? 1 : 0;
        job.strange += report.status == JobStatus::Running || report.status == JobStatus::Failed ? 0 : 1;
    }
}

void EngineReports::Cancelled(const std::vector<JobStatusInfo>& cancelled) {
    std::map<std::wstring, JobStatus> reports; // one per job: a running one may be reported twice
    for (const JobStatusInfo& report : cancelled) {
        reports[report.id] = report.status;
    }
    const std::lock_guard lock(mutex);
    for (const auto& [id, status] : reports) {
        Job& job = jobs[id];
        job.dequeued += status == JobStatus::Dequeued ? 1 : 0;
        job.cancelling += status == JobStatus::Canceling ? 1 : 0;
        job.strange += status == JobStatus::Dequeued || status == JobStatus::Canceling ? 0 : 1;
    }
}

void EngineReports::Ended(const std::vector<JobStatusInfo>& changed) {
    const std::lock_guard lock(mutex);
    for (const JobStatusInfo& report : changed) {
        Job& job = jobs[report.id];
        job.strange += HasRun(report.status) || IsActive(report.status) ? 0 : 1;
        if (HasRun(report.status)) {
            ++job.ended;
            job.last = report.status;
        }
    }
}

void EngineReports::Deleted(const std::vector<std::wstring>& ids) {
    const std::lock_guard lock(mutex);
    for (const std::wstring& id : ids) {
        ++jobs[id].deleted;
    }
}

void EngineReports::Run(const std::wstring& id) {
    const std::lock_guard lock(mutex);
    ++jobs[id].runs;
}

std::vector<std::wstring> EngineReports::LatestIds(std::size_t count) const {
    const std::lock_guard lock(mutex);
    const auto first = order.end() - static_cast<std::ptrdiff_t>(std::min(count, order.size()));
    return {first, order.end()};
}

std::vector<std::string> EngineReports::Problems(const std::vector<JobListInfo>& listed) const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> problems;
    std::map<std::wstring, const JobListInfo*> rows;
    for (const JobListInfo& row : listed) {
        if (!rows.emplace(row.id, &row).second || !jobs.contains(row.id)) {
            problems.push_back(Describe(row.id, "listed twice, or never enqueued"));
        }
    }
    for (const auto& [id, job] : jobs) {
        const auto row = rows.find(id);
        const std::string problem = ProblemOf(job, row == rows.end() ? nullptr : row->second);
        if (!problem.empty()) {
            problems.push_back(Describe(id, problem));
        }
    }
    return problems;
}

std::string EngineReports::ProblemOf(const Job& job, const JobListInfo* listed) {
    const int fates = job.startReports + job.failedStartReports + job.dequeued;
    if (job.enqueued != 1 || job.strange != 0 || job.deleted > 1 || job.cancelling > 1) {
        return "enqueued, deleted or cancelled more than once, or told of in a status that the operation cannot give";
    }
    if (fates > 1 || (fates == 0 && job.deleted == 0)) {
        return "started " + std::to_string(job.startReports + job.failedStartReports) + " times, dequeued " +
               std::to_string(job.dequeued) + " times";
    }
    if (job.runs != job.startReports + job.failedStartReports || job.ended != job.startReports) {
        return "run " + std::to_string(job.runs) + " times, ended " + std::to_string(job.ended) + " times";
    }
    if ((listed == nullptr) != (job.deleted == 1)) {
        return listed == nullptr ? "lost" : "listed though deleted";
    }
    const JobStatus fate = job.dequeued == 1             ? JobStatus::Dequeued
                           : job.failedStartReports == 1 ? JobStatus::Failed
                                                         : job.last;
    return listed == nullptr || listed->status == fate ? "" : "its status is not the one that was told last";
}

std::string ListWatch::Look(const std::vector<JobListInfo>& list) {
    if (const auto problems = OrderProblems(list, gone); !problems.empty()) {
        return problems.front();
    }
    std::map<std::wstring, JobStatus> now;
    int active = 0;
    for (const JobListInfo& job : list) {
        now.emplace(job.id, job.status);
        const auto before = seen.find(job.id);
        if (before != seen.end() && !IsReachable(before->second, job.status)) {
            return Describe(job.id, "went from " + StatusText(before->second) + " to " + StatusText(job.status));
        }
        active += IsActive(job.status) ? 1 : 0;
    }
    for (const auto& [id, status] : seen) {
        if (!now.contains(id)) {
            gone.insert(id);
        }
    }
    seen = std::move(now);
    return active > 1 ? std::to_string(active) + " jobs are active at the same time" : "";
}
