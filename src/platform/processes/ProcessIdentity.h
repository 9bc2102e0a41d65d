#pragma once

#include <cstdint>

#include "platform/processes/ProcessHandle.h"

namespace platform {

/// Identifies a process on this machine, also among later ones with the same process id.
struct ProcessIdentity {
    std::uint32_t number = 0;
    /// Start time in a system-specific unit and epoch: only for comparison.
    std::int64_t start = 0;

    bool operator==(const ProcessIdentity&) const = default;
};

/// The identity of this process. Threads: any.
ProcessIdentity OwnProcessIdentity();

/// Opens a process of this user, to wait for its end or ask it to end. Returns null if it has ended, if another process
/// now has its id, or if it belongs to another user. Threads: any.
OwnedHandle OpenProcess(const ProcessIdentity& process);

/// Same as `RequestTermination` (see Process.h). Returns false if the system has no such request.
bool AskOtherProcessToEnd(void* process);

} // namespace platform
