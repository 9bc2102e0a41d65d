#pragma once

#include <cstdint>

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

/// Processes that other code in this process has started, for example a function module.
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

} // namespace platform
