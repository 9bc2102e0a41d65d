#pragma once

#include <string>

#include "slurm/WaiterProgram.h"

namespace slurm {

/// Cancels all jobs whose names begin with `prefix`, except those of the host's process `keptHost`. Tries again until
/// the cluster has answered or `host` has ended; `host` may be null.
WaiterExit EndLostJobs(const std::wstring& prefix, const std::wstring& keptHost, void* host);

} // namespace slurm
