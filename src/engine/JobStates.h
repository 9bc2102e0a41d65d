#pragma once

#include "CommonControllerLib/JobStatus.h"

/// A process runs for the job, and the engine watches it.
constexpr bool IsActive(JobStatus status) {
    return status == JobStatus::Running || status == JobStatus::Canceling;
}

/// The job has come to an end that a restart of the application leaves as it is.
constexpr bool HasEnded(JobStatus status) {
    return status == JobStatus::Success || status == JobStatus::Failed || status == JobStatus::Canceled;
}
