#include "controller_cli/jobs/JobRow.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "controller_cli/jobs/JobFiles.h"
#include "formats/JobStates.h"
#include "text/Text.h"

namespace controller_cli {
namespace {

void TakeProgress(JobRow& view) {
    if (const auto report = LastReportOf(view.job)) {
        view.message = report->message;
    }
}

void TakeResult(JobRow& view) {
    ResultReport result = ResultOf(view.job);
    view.messages = std::move(result.messages);
    view.outputFiles = std::move(result.outputFiles);
    view.message = view.messages.empty() ? std::wstring() : view.messages.front();
    constexpr std::int32_t ended = 100;
    if (view.job.status != JobStatus::Success && view.progress == ended) {
        view.progress = LastReportOf(view.job).value_or(ProgressReport()).progress;
    }
}

JobListInfo Updated(JobListInfo job, const JobStatusInfo& report) {
    job.status = report.status;
    job.progress = report.progress;
    job.outputDir = report.outputDir;
    job.workDir = report.workDir;
    job.startTime = report.startTime;
    job.endTime = report.endTime;
    return job;
}

/// The report has no other data. The work directory is gone; the results remain.
void MarkDeleted(JobRow& view) {
    view.job.status = unlistedStatus;
    view.message.clear();
    view.workDirectory.clear();
}

std::optional<int> Digits(const std::wstring& text, std::size_t begin, std::size_t count) {
    int number = 0;
    for (std::size_t i = begin; i < begin + count; ++i) {
        if (text[i] < L'0' || text[i] > L'9') {
            return std::nullopt;
        }
        number = number * 10 + (text[i] - L'0');
    }
    return number;
}

/// Parses a time such as "2024-03-05T07:08:09Z".
std::optional<std::int64_t> ReadUtc(const std::wstring& text) {
    constexpr std::size_t length = 20;
    if (text.size() != length) {
        return std::nullopt;
    }
    const auto year = Digits(text, 0, 4);
    const auto month = Digits(text, 5, 2);
    const auto day = Digits(text, 8, 2);
    const auto hour = Digits(text, 11, 2);
    const auto minute = Digits(text, 14, 2);
    const auto second = Digits(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day)));
    if (!date.ok()) {
        return std::nullopt;
    }
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    return ((days * 24 + *hour) * 60 + *minute) * 60 + *second;
}

} // namespace

std::wstring StatusName(JobStatus status) {
    return status == unlistedStatus ? L"Deleted" : text::FromUtf8(JobStatusString(status));
}

JobRow ViewOf(const JobListInfo& job) {
    JobRow view;
    view.job = job;
    view.progress = std::clamp(job.progress, 0, 100);
    view.outputFolder = OutputDirectoryOf(job);
    view.workDirectory = WorkDirectoryOf(job);
    if (IsActive(job.status)) {
        TakeProgress(view);
    } else if (IsOver(job.status)) {
        TakeResult(view);
    }
    return view;
}

std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now) {
    const auto start = ReadUtc(job.startTime);
    if (!start) {
        return -1;
    }
    const std::int64_t end = IsOver(job.status) ? ReadUtc(job.endTime).value_or(*start) : now;
    return end < *start ? 0 : end - *start;
}

JobModel::JobModel(const std::vector<JobListInfo>& jobs) {
    Renew(jobs);
}

std::vector<std::wstring> JobModel::Renew(const std::vector<JobListInfo>& jobs) {
    std::vector<std::wstring> changed;
    for (const JobListInfo& job : jobs) {
        const auto [entry, isNew] = indexById.try_emplace(job.id, views.size());
        if (!isNew && views[entry->second].job == job) {
            continue;
        }
        if (isNew) {
            views.emplace_back();
        }
        views[entry->second] = ViewOf(job);
        changed.push_back(job.id);
    }
    return changed;
}

std::vector<std::wstring> JobModel::Ids() const {
    std::vector<std::wstring> ids;
    for (const JobRow& view : views) {
        ids.push_back(view.job.id);
    }
    return ids;
}

const JobRow* JobModel::Find(const std::wstring& id) const {
    const auto found = indexById.find(id);
    return found == indexById.end() ? nullptr : &views[found->second];
}

const JobRow* JobModel::Update(const JobStatusInfo& report) {
    const auto found = indexById.find(report.id);
    if (found == indexById.end()) {
        return nullptr;
    }
    JobRow& view = views[found->second];
    if (report.status == unlistedStatus) {
        MarkDeleted(view);
    } else {
        view = ViewOf(Updated(view.job, report));
    }
    return &view;
}

} // namespace controller_cli
