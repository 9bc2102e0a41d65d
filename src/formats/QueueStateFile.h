#pragma once

#include "CommonControllerLib/Export.h"
#include "formats/Scheduling.h"

#include <string>

/// The state of the queue in a file beside the job list, so that a paused queue is still paused after a restart.
/// Threads: any.
namespace queue_state_file {

/// Returns the path of the file for the list at `listPath`.
CONTROLLER_API std::wstring PathOf(const std::wstring& listPath);

/// Reads the state. Without a file it is the default one. If the file cannot be read, logs why and returns a paused
/// queue: what somebody has paused must not start by accident.
CONTROLLER_API QueueState Read(const std::wstring& listPath);

/// Replaces the state atomically and durably. On failure returns false and sets `problem`.
[[nodiscard]] CONTROLLER_API bool Write(const std::wstring& listPath, const QueueState& state, std::wstring& problem);

} // namespace queue_state_file
