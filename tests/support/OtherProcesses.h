#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/processes/ProcessHandle.h"

namespace test_support {

/// A handle to a process that somebody else started; null when there is none of this number (any more).
[[nodiscard]] platform::OwnedHandle OpenProcessByNumber(std::uint32_t number);

/// The numbers of the processes that this one started and that are still there, those that have ended but were not
/// taken notice of included; not that which Windows gives it for its console.
std::vector<std::uint32_t> ChildrenOf(std::uint32_t number);

/// How many living processes have their current directory in or below `directory`. Windows does not tell (0), but keeps
/// such a directory from being removed.
int CountProcessesIn(const std::wstring& directory);

/// True when a process, and each that it started, is so far that it runs a program's code. Always on Linux. Wine's
/// server does not survive the end of a process that it has only begun to make.
bool HasBegun(std::uint32_t number);

/// Ends one process by force, and nothing that it started.
void KillProcess(void* process);

/// Ends by force what this process has started, and what those started in turn, whatever session they are in. On
/// Windows that happens by itself at the end of this process, however it ends.
void EndAllStarted();

} // namespace test_support
