#pragma once

#include <fcntl.h>
#include <sys/types.h>

// The header of glibc 2.36 lacks extern "C" for these functions.
extern "C" {
#include <sys/pidfd.h>
}

namespace platform {

/// A pidfd, which becomes readable when the process ends; close-on-exec. -1 on failure.
inline int OpenProcessDescriptor(pid_t process) {
    return pidfd_open(process, 0);
}

} // namespace platform
