#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/system/OwnedHandle.h"

namespace test_support {

/// A handle to a process started by another; null if there is none with this number (any more).
[[nodiscard]] platform::OwnedHandle OpenProcessByNumber(std::uint32_t number);

/// The numbers of this process's children, including ended ones that were not reaped; without the one that Windows adds
/// for its console.
std::vector<std::uint32_t> ChildrenOf(std::uint32_t number);

/// The number of live processes with their current directory in or below `directory`. Always 0 on Windows, where such a
/// directory cannot be removed.
int CountProcessesIn(const std::wstring& directory);

/// True if a process and all its children run program code. Always true on Linux. Wine's server does not survive the
/// end of a process that is still being created.
bool HasBegun(std::uint32_t number);

/// Kills one process, but not its children.
void KillProcess(void* process);

/// Kills all processes started by this one and by those, in any session. On Windows this happens automatically at the
/// end of this process.
void EndAllStarted();

} // namespace test_support
