#pragma once

#include <cstdint>

#include <fcntl.h>
#include <sys/types.h>
#include <sys/wait.h>

// The header of glibc 2.36 lacks extern "C" for these functions.
extern "C" {
#include <sys/pidfd.h>
}

namespace platform {

/// A pidfd, which becomes readable when the process ends; close-on-exec. -1 on failure.
inline int OpenProcessDescriptor(pid_t process) {
    return pidfd_open(process, 0);
}

/// Added to a signal's number, the convention of shells.
inline constexpr std::int32_t signalExitBase = 128;

/// The exit code in a result of `waitid`.
inline std::int32_t ExitStatusOf(const siginfo_t& ended) {
    return ended.si_code == CLD_EXITED ? ended.si_status : signalExitBase + ended.si_status;
}

} // namespace platform
