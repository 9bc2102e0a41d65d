#pragma once

#include <fcntl.h>
#include <sys/types.h>

// The header of glibc 2.36 does not tell C++ that these are C functions.
extern "C" {
#include <sys/pidfd.h>
}

namespace platform {

/// A descriptor that becomes readable when the process ends, marked close-on-exec; -1 when the system refuses.
inline int OpenProcessDescriptor(pid_t process) {
    return pidfd_open(process, 0);
}

} // namespace platform
