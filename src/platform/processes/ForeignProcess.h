#pragma once

#include <cstdint>

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

/// Processes that other code inside this process has started, a function module for instance.
namespace platform {

/// The number by which other code knows a process handle of this library: the value of the `HANDLE`; on Linux the
/// pidfd. 0 for null.
std::uint64_t NumberOfHandle(void* process);

/// Takes ownership of the process handle with this number. On failure the handle with that number, if there is one,
/// stays its owner's: it is no handle of a process, or one of this very process, which would never end.
Error AdoptProcess(std::uint64_t number, OwnedHandle& process);

/// Opens the process with this id of the system. Fails for this very process too. A process that has ended can be
/// opened as long as somebody still has a handle to it (Windows), or its parent has not reaped it (Linux).
Error OpenProcessById(std::uint32_t id, OwnedHandle& process);

} // namespace platform
