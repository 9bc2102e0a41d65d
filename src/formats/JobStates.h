#pragma once

#include "CommonControllerLib/JobStatus.h"

/// What a report says of a job that is not, or no longer, in the list. `JobStatusString` has no name for it.
inline constexpr JobStatus unlistedStatus = static_cast<JobStatus>(-1);

/// A process runs for the job, and the engine watches it.
constexpr bool IsActive(JobStatus status) {
    return status == JobStatus::Running || status == JobStatus::Canceling;
}

/// The job has come to an end that a restart of the application leaves as it is.
constexpr bool HasEnded(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Canceled;
}

/// The job neither waits nor runs: it has ended, was taken out of the queue, or is not listed; also for a value without
/// a name.
constexpr bool IsOver(JobStatus status) {
    return status != JobStatus::Queued && !IsActive(status);
}
