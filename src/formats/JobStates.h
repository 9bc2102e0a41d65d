#pragma once

#include "CommonControllerLib/JobStatus.h"

/// The status reported for a job that is not in the list. `JobStatusString` has no name for it.
inline constexpr JobStatus unlistedStatus = static_cast<JobStatus>(-1);

/// True if a process runs for the job and the engine watches it.
constexpr bool IsActive(JobStatus status) {
    return status == JobStatus::Running || status == JobStatus::Canceling;
}

/// True for a final status, which a restart of the application does not change.
constexpr bool HasEnded(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Canceled;
}

/// True if the job is neither queued nor active: it has ended, was removed from the queue, or is not listed. Also true
/// for a value without a name.
constexpr bool IsOver(JobStatus status) {
    return status != JobStatus::Queued && !IsActive(status);
}
