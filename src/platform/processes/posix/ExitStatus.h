#pragma once

#include <cstdint>

#include <sys/wait.h>

namespace platform {

/// Added to a signal's number, the convention of shells.
inline constexpr std::int32_t signalExitBase = 128;

/// The exit code in a result of `waitid`.
inline std::int32_t ExitStatusOf(const siginfo_t& ended) {
    return ended.si_code == CLD_EXITED ? ended.si_status : signalExitBase + ended.si_status;
}

} // namespace platform
