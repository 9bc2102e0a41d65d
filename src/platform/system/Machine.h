#pragma once

#include <string>

namespace platform {

/// The name of this machine in its network; empty if it has none. Threads: any.
std::wstring MachineName();

/// The name of the account of this process; its number if it has no name. Threads: any.
std::wstring AccountName();

} // namespace platform
