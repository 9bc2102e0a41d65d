#pragma once

#include <cstdint>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

/// Processes that this library has not started: other code in this process, for example a function module, or another
/// process has. Threads: any.
namespace platform {

/// The number by which other code identifies a process handle of this library: the value of the `HANDLE` on Windows,
/// the pidfd on Linux. 0 for null.
std::uint64_t NumberOfHandle(void* process);

/// Takes ownership of the process handle with this number. Fails if the number is not a process handle, or refers to
/// this process, which would never end; then the handle stays with its owner.
Error AdoptProcess(std::uint64_t number, OwnedHandle& process);

/// Opens the process with this system id. Fails for this process. An ended process can be opened while another handle
/// to it exists (Windows), or until its parent has reaped it (Linux).
Error OpenProcessById(std::uint32_t id, OwnedHandle& process);

/// Identifies a process on this machine, also among later ones with the same process id.
struct ProcessIdentity {
    std::uint32_t number = 0;
    /// Start time in a system-specific unit and epoch: only for comparison.
    std::int64_t start = 0;

    bool operator==(const ProcessIdentity&) const = default;
};

/// The identity of this process.
ProcessIdentity OwnProcessIdentity();

/// Opens a process of this user, to wait for its end or ask it to end. Returns null if it has ended, if another process
/// now has its id, or if it belongs to another user.
OwnedHandle OpenProcess(const ProcessIdentity& process);

} // namespace platform
