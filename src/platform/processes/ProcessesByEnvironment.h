#pragma once

#include <cstddef>
#include <set>
#include <string>

namespace platform {

/// Ends by force the processes of this user, but this one, that were started with the environment variable `variable`
/// set to one of `values`, and what they start meanwhile; returns how many were ended, when none is left or after some
/// seconds. For what outlived the process that should have ended it. On Windows nothing can: a process tree's job
/// object ends with its owner, and all that is in it. Any thread.
std::size_t KillProcessesByEnvironment(const std::wstring& variable, const std::set<std::wstring>& values);

} // namespace platform
