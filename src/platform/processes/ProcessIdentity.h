#pragma once

#include <cstdint>

#include "platform/processes/ProcessHandle.h"

namespace platform {

/// Tells a process from all others of this machine, also from later ones that get the same number.
struct ProcessIdentity {
    std::uint32_t number = 0;
    /// In the system's own unit, from its own beginning: only for comparison.
    std::int64_t start = 0;

    bool operator==(const ProcessIdentity&) const = default;
};

/// The identity of this process. Any thread.
ProcessIdentity OwnProcessIdentity();

/// Opens a process of this user, to wait for its end or to ask it to end. Null when it has ended, when another process
/// has its number now, or when it belongs to another user. Any thread.
OwnedHandle OpenProcess(const ProcessIdentity& process);

/// As `RequestTermination` (see Process.h); false where the system has no way of asking.
bool AskOtherProcessToEnd(void* process);

} // namespace platform
