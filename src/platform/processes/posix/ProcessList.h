#pragma once

#include <vector>

#include <sys/types.h>

namespace platform {

/// The ids of all processes of this machine.
std::vector<pid_t> ListProcesses();

} // namespace platform
