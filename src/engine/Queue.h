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

/// The rules of the queue of jobs: which job a request names, how a status may change, how jobs are numbered. They know
/// no engine, no file and no clock. Pure functions, any thread.
namespace queue {

/// Takes the name of the job with this id and number, its id or else its number in decimal text, out of what was
/// requested, and returns it; nothing when neither was there. So each requested name stands for one job at most, the
/// first that it is tried on.
inline std::optional<std::wstring> TakeRequested(const std::wstring& id, std::int32_t number,
                                                 std::set<std::wstring>& requested) {
    if (requested.erase(id) > 0) {
        return id;
    }
    std::wstring name = numbers::DecimalText(number);
    return requested.erase(name) > 0 ? std::optional(std::move(name)) : std::nullopt;
}

/// The number of the job after that with `number`. A job list edited by hand may hold the largest one, which is
/// followed by the smallest.
constexpr std::int32_t NumberAfter(std::int32_t number) {
    using Limits = std::numeric_limits<std::int32_t>;
    return number == Limits::max() ? Limits::min() : number + 1;
}

/// The number of the next job when `next` was to be it, and a job with `listed` is in the list already.
constexpr std::int32_t NextNumber(std::int32_t next, std::int32_t listed) {
    return listed < next ? next : NumberAfter(listed);
}

/// Only what waits is started; execution passes over everything else.
constexpr bool CanStart(JobStatus status) {
    return status == JobStatus::Queued;
}

/// What a cancellation makes of a job: it leaves the queue, or it is asked to stop. Nothing where there is nothing to
/// cancel.
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

/// What the end of its process makes of a job: a cancelled one is canceled whatever its result says.
constexpr JobStatus AfterEnd(JobStatus status, bool hasSucceeded) {
    if (status == JobStatus::Canceling) {
        return JobStatus::Canceled;
    }
    return hasSucceeded ? JobStatus::Success : JobStatus::Failed;
}

/// What a restart of the application makes of a listed job: what its end interrupted is never resumed.
constexpr JobStatus AfterRestart(JobStatus status, bool keepsDequeued) {
    const bool stays = HasEnded(status) || (keepsDequeued && status == JobStatus::Dequeued);
    return stays ? status : JobStatus::Canceled;
}

/// A process works in the directory of an active job.
constexpr bool CanDelete(JobStatus status) {
    return !IsActive(status);
}

} // namespace queue
