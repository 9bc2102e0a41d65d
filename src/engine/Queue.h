#pragma once

#include "CommonControllerLib/JobStatus.h"
#include "formats/JobStates.h"
#include "text/Numbers.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <utility>

/// The rules of the job queue: which job a request names, how a status may change, how jobs are numbered. Pure
/// functions without access to engine, files or clock. Threads: any.
namespace queue {

/// Removes the id of a job, or else its number in decimal text, from `requested` and returns it; returns nothing if
/// neither was requested. Each requested name therefore matches at most one job, the first that it is tried on.
inline std::optional<std::wstring> TakeRequested(const std::wstring& id, std::int32_t number,
                                                 std::set<std::wstring>& requested) {
    if (requested.erase(id) > 0) {
        return id;
    }
    std::wstring name = numbers::DecimalText(number);
    return requested.erase(name) > 0 ? std::optional(std::move(name)) : std::nullopt;
}

/// Returns the job number after `number`. A job list edited by hand may contain the largest number; the smallest one
/// follows it.
constexpr std::int32_t NumberAfter(std::int32_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return number == Limits::max() ? Limits::min() : number + 1;
}

/// Returns the next job number, given that `next` was to be used and that the list contains a job with the number
/// `listed`.
constexpr std::int32_t NextNumber(std::int32_t next, std::int32_t listed) {
    return listed < next ? next : NumberAfter(listed);
}

/// Only queued jobs are started; execution skips all others.
constexpr bool CanStart(JobStatus status) {
    return status == JobStatus::Queued;
}

/// Returns the status of a job after its cancellation: it leaves the queue, or is asked to stop. Returns nothing if the
/// job cannot be cancelled.
constexpr std::optional<JobStatus> AfterCancel(JobStatus status) {
    switch (status) {
    case JobStatus::Queued:
        return JobStatus::Dequeued;
    case JobStatus::Running:
        return JobStatus::Canceling;
    default:
        return std::nullopt;
    }
}

/// Returns the status of a job after the end of its process. A job that was asked to stop is cancelled whatever its
/// result is.
constexpr JobStatus AfterEnd(JobStatus status, bool hasSucceeded) {
    if (status == JobStatus::Canceling) {
        return JobStatus::Canceled;
    }
    return hasSucceeded ? JobStatus::Success : JobStatus::Failed;
}

/// Which listed jobs keep their status when the application starts again.
struct RestartRules {
    /// A `Dequeued` job stays `Dequeued`.
    bool keepsDequeued = false;
    /// A queued job stays queued.
    bool keepsQueued = false;
    /// An interrupted job is queued again, unless it was being cancelled.
    bool requeuesRunning = false;
};

/// Returns the status of a listed job after a restart of the application: a job that has ended keeps its status, any
/// other one is cancelled unless the rules say otherwise. An interrupted job is never resumed.
constexpr JobStatus AfterRestart(JobStatus status, const RestartRules& rules) {
    const bool stays = HasEnded(status) || (rules.keepsDequeued && status == JobStatus::Dequeued) ||
                       (rules.keepsQueued && status == JobStatus::Queued);
    if (rules.requeuesRunning && status == JobStatus::Running) {
        return JobStatus::Queued;
    }
    return stays ? status : JobStatus::Canceled;
}

/// An active job's directory is in use by its process.
constexpr bool CanDelete(JobStatus status) {
    return !IsActive(status);
}

} // namespace queue
