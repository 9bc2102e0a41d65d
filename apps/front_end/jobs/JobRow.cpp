#include "front_end/jobs/JobRow.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "formats/JobStates.h"
#include "front_end/jobs/JobFiles.h"
#include "platform/system/Clock.h"
#include "text/Text.h"
#include "text/Time.h"

namespace front_end {
namespace {

void TakeProgress(JobRow& view) {
    if (const auto report = LastReportOf(view.job)) {
        view.message = report->message;
    }
}

/// The report has no other data. The work directory is gone; the results remain.
void MarkDeleted(JobRow& view) {
    view.job.status = unlistedStatus;
    view.message.clear();
    view.workDirectory.clear();
}

} // namespace

std::wstring StatusName(JobStatus status) {
    return status == unlistedStatus ? L"Deleted" : text::FromUtf8(JobStatusString(status));
}

ListedJob Updated(ListedJob job, const JobStatusInfo& report) {
    job.status = report.status;
    job.progress = report.progress;
    job.outputDir = report.outputDir;
    job.workDir = report.workDir;
    job.startTime = report.startTime;
    job.endTime = report.endTime;
    return job;
}

void ReadEnding(JobRow& row) {
    ResultReport result = ResultOf(row.job);
    row.messages = std::move(result.messages);
    row.outputFiles = std::move(result.outputFiles);
    row.message = row.messages.empty() ? std::wstring() : row.messages.front();
    constexpr std::int32_t ended = 100;
    if (row.job.status != JobStatus::Success && row.progress == ended) {
        row.progress = LastReportOf(row.job).value_or(ProgressReport()).progress;
    }
}

JobRow ViewOf(ListedJob job) {
    JobRow view;
    view.job = std::move(job);
    view.progress = std::clamp(view.job.progress, 0, 100);
    view.outputFolder = OutputDirectoryOf(view.job);
    view.workDirectory = WorkDirectoryOf(view.job);
    if (IsActive(view.job.status)) {
        TakeProgress(view);
    } else if (IsOver(view.job.status)) {
        ReadEnding(view);
    }
    return view;
}

std::vector<JobRow> ViewsOf(std::vector<ListedJob> jobs) {
    std::vector<JobRow> views;
    views.reserve(jobs.size());
    for (ListedJob& job : jobs) {
        views.push_back(ViewOf(std::move(job)));
    }
    return views;
}

std::wstring TimeText(std::int64_t time) {
    return time == 0 ? std::wstring() : platform::UtcTimestamp(time);
}

std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now) {
    const auto start = text::ReadUtcTime(job.startTime);
    if (!start) {
        return -1;
    }
    const std::int64_t end = IsOver(job.status) ? text::ReadUtcTime(job.endTime).value_or(*start) : now;
    return end < *start ? 0 : end - *start;
}

JobModel::JobModel(const std::vector<ListedJob>& jobs) {
    Renew(jobs);
}

std::vector<std::wstring> JobModel::Renew(const std::vector<ListedJob>& jobs) {
    std::vector<std::wstring> changed;
    for (const ListedJob& job : jobs) {
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

} // namespace front_end
