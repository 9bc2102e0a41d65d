#pragma once

#include <vector>

#include <sys/types.h>

namespace platform {

/// The numbers of all processes of this machine at this moment.
std::vector<pid_t> ListProcesses();

} // namespace platform
