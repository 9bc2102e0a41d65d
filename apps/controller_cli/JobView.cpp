#include "controller_cli/JobView.h"

#include <chrono>
#include <optional>
#include <utility>

#include "companion/ControllerCSWrapper.h"
#include "companion/RunProtocol.h"
#include "platform/FileSystem.h"
#include "support/PathFuncs.h"

namespace controller_cli {
namespace {

std::wstring ProgressMessage(const std::wstring& path) {
    std::wstring message;
    int progress = 0;
    // Of a file that cannot be read there is no message.
    (void)ControllerCSWrapper::ParseProgressFile(path, message, progress);
    return message;
}

std::wstring ResultMessage(const std::wstring& path) {
    bool succeeded = false;
    std::vector<std::pair<int, std::wstring>> messages;
    std::vector<std::wstring> outputFiles;
    (void)ControllerCSWrapper::ParseRunScenarioResult(path, succeeded, messages, outputFiles);
    return messages.empty() ? std::wstring() : messages.front().second;
}

/// A job that succeeded has its output to show, and one that waits nothing yet.
std::wstring MessageOf(const JobListInfo& job) {
    const bool isActive = job.status == JobStatus::Running || job.status == JobStatus::Canceling;
    const bool hasFailed = HasEnded(job.status) && job.status != JobStatus::Success && job.status != deletedStatus;
    if (job.workDir.empty() || (!isActive && !hasFailed)) {
        return {};
    }
    const std::wstring path =
        PathFuncs::Join(job.workDir, isActive ? run_protocol::progressFileName : run_protocol::resultFileName);
    if (!platform::Exists(path)) {
        return {};
    }
    return isActive ? ProgressMessage(path) : ResultMessage(path);
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

/// The time in "2024-03-05T07:08:09Z".
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

bool HasEnded(JobStatus status) {
    return status != JobStatus::Queued && status != JobStatus::Running && status != JobStatus::Canceling;
}

JobView ViewOf(const JobListInfo& job) {
    return {job, MessageOf(job)};
}

std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now) {
    const auto start = ReadUtc(job.startTime);
    if (!start) {
        return -1;
    }
    const std::int64_t end = HasEnded(job.status) ? ReadUtc(job.endTime).value_or(*start) : now;
    return end < *start ? 0 : end - *start;
}

JobBoard::JobBoard(const std::vector<JobListInfo>& jobs) {
    Renew(jobs);
}

std::vector<std::wstring> JobBoard::Renew(const std::vector<JobListInfo>& jobs) {
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

const JobView* JobBoard::Update(const JobStatusInfo& report) {
    const auto found = indexById.find(report.id);
    if (found == indexById.end()) {
        return nullptr;
    }
    JobListInfo job = views[found->second].job;
    job.status = report.status;
    if (report.status != deletedStatus) {
        job.progress = report.progress;
        job.outputDir = report.outputDir;
        job.workDir = report.workDir;
        job.startTime = report.startTime;
        job.endTime = report.endTime;
    }
    views[found->second] = ViewOf(job);
    return &views[found->second];
}

} // namespace controller_cli
