#pragma once

#include <cstdint>

/// The state of a job. Stored as its number in the job list file and in messages, which may contain any 32-bit value; a
/// value without a name is shown as "Unknown".
enum class JobStatus : std::int32_t {
    /// Waits to be started.
    Queued = 0,
    Running = 1,
    Success = 2,
    Failed = 3,
    /// Cancelled before it was started.
    Dequeued = 4,
    /// Asked to stop; its process still runs.
    Canceling = 5,
    /// Cancelled while it ran, or unfinished when the engine was restarted.
    Canceled = 6
};

/// The narrow name of a status, "Unknown" for a value without a name (including negative values). Never null; static
/// storage.
inline const char* JobStatusString(JobStatus status) {
    constexpr const char* names[] = {"Queued", "Running", "Success", "Failed", "Dequeued", "Canceling", "Canceled"};
    const auto index = static_cast<std::uint32_t>(status);
    return index < sizeof(names) / sizeof(names[0]) ? names[index] : "Unknown";
}
