#pragma once

#include <windows.h>

#include "platform/processes/ProcessTree.h"

namespace platform {

/// The limits of a job object that kills its processes when it is closed. Allocations beyond the memory limit fail.
JOBOBJECT_EXTENDED_LIMIT_INFORMATION JobLimitsOf(const ResourceLimits& limits);

/// The processor time of a job object on a machine with so many cores: a hard limit in hundredths of a percent of all
/// cores together.
JOBOBJECT_CPU_RATE_CONTROL_INFORMATION CpuRateOf(const ResourceLimits& limits, DWORD cores);

} // namespace platform
