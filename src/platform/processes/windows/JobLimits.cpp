#include "platform/processes/windows/JobLimits.h"

#include <algorithm>

namespace platform {

JOBOBJECT_EXTENDED_LIMIT_INFORMATION JobLimitsOf(const ResourceLimits& limits) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION job{};
    job.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (limits.memory > 0) {
        job.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_JOB_MEMORY;
        job.JobMemoryLimit = static_cast<SIZE_T>(limits.memory);
    }
    return job;
}

JOBOBJECT_CPU_RATE_CONTROL_INFORMATION CpuRateOf(const ResourceLimits& limits, DWORD cores) {
    constexpr DWORD hundredths = 100;
    constexpr DWORD all = 10000;
    JOBOBJECT_CPU_RATE_CONTROL_INFORMATION rate{};
    rate.ControlFlags = JOB_OBJECT_CPU_RATE_CONTROL_ENABLE | JOB_OBJECT_CPU_RATE_CONTROL_HARD_CAP;
    rate.CpuRate = std::clamp<DWORD>(static_cast<DWORD>(limits.cpuPercent) * hundredths / cores, 1, all);
    return rate;
}

} // namespace platform
