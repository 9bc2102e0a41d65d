#include "front_end/jobs/Forecast.h"

#include <algorithm>
#include <cmath>

#include "formats/JobStates.h"

namespace front_end {
namespace {

/// Shorter observations say little.
constexpr std::int64_t shortestObservation = 3;

/// A job that waits for another one or a resource starts when these end; hold and time are up to the user.
bool MayStall(const ListedJob& job) {
    return job.status == JobStatus::Queued && (job.waitReason == L"hold" || job.waitReason == L"time");
}

} // namespace

std::int32_t JobsProgress::Percent() const {
    return jobCount == 0 ? 0 : static_cast<std::int32_t>(100 * done / static_cast<double>(jobCount));
}

JobsProgress ProgressOf(const std::vector<const JobRow*>& jobs) {
    JobsProgress progress;
    progress.jobCount = jobs.size();
    for (const JobRow* row : jobs) {
        const bool isActive = IsActive(row->job.status);
        progress.done += IsOver(row->job.status) ? 1.0 : isActive ? row->progress / 100.0 : 0.0;
        progress.mayStall = progress.mayStall || MayStall(row->job);
    }
    return progress;
}

Forecast ForecastOf(const JobsProgress& before, const JobsProgress& now, std::int64_t seconds) {
    const double gain = now.done - before.done;
    if (seconds < shortestObservation || gain <= 0) {
        return {};
    }
    const double perSecond = gain / static_cast<double>(seconds);
    const double left = (static_cast<double>(now.jobCount) - now.done) / perSecond;
    return {60 * perSecond, now.mayStall ? std::nullopt : std::optional(std::llround(std::ceil(left)))};
}

std::optional<std::int64_t> TimeLeft(const JobRow& job, std::int64_t now) {
    const std::int64_t elapsed = SecondsOf(job.job, now);
    if (job.job.status != JobStatus::Running || job.progress <= 0 || elapsed < shortestObservation) {
        return std::nullopt;
    }
    return elapsed * (100 - std::min(job.progress, 100)) / job.progress;
}

} // namespace front_end
