#pragma once

#include <cstdint>

#include <sys/wait.h>

namespace platform {

/// The exit code in what `waitid` told; a signal counts as a shell counts it.
inline std::int32_t ExitStatusOf(const siginfo_t& ended) {
    constexpr std::int32_t signalBase = 128;
    return ended.si_code == CLD_EXITED ? ended.si_status : signalBase + ended.si_status;
}

} // namespace platform
