#pragma once

#include <cstddef>
#include <set>
#include <string>

namespace platform {

/// Kills the processes of this user, except this one, that were started with the environment variable `variable` set to
/// one of `values`, and those they start during the call. Returns the number of killed processes when none is left, or
/// after some seconds. For orphans of a supervisor that died. Does nothing on Windows, where the job object ends with
/// its owner and takes the whole tree with it. Threads: any.
std::size_t KillProcessesByEnvironment(const std::wstring& variable, const std::set<std::wstring>& values);

} // namespace platform
