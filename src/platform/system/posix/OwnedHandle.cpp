#include "platform/system/OwnedHandle.h"

#include "platform/system/posix/Descriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

bool IsProcessRunning(void* process) {
    const int descriptor = DescriptorOf(process);
    if (descriptor < 0) {
        return false;
    }
    pollfd look{descriptor, POLLIN, 0};
    int looked = 0;
    do {
        looked = poll(&look, 1, 0);
    } while (looked < 0 && errno == EINTR);
    return looked <= 0; // a failed poll does not mean that the process has ended
}

void CloseProcessHandle(void* process) {
    const int descriptor = DescriptorOf(process);
    if (descriptor < 0) {
        return;
    }
    const int earlierError = errno;
    siginfo_t ended{};
    waitid(P_PIDFD, static_cast<id_t>(descriptor), &ended, WEXITED | WNOHANG);
    errno = earlierError;
    CloseFileHandle(process);
}

void CloseFileHandle(void* file) {
    const int descriptor = DescriptorOf(file);
    if (descriptor < 0) {
        return;
    }
    // A caller that closes a handle on its way out of a failure still reads the failure's number.
    const int earlierError = errno;
    close(descriptor);
    errno = earlierError;
}

void* CopyHandle(void* handle) {
    const int copy = fcntl(DescriptorOf(handle), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    return copy < 0 ? nullptr : HandleOf(copy);
}

} // namespace platform
