#include "platform/processes/ForeignProcess.h"

#include <cerrno>
#include <climits>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/processes/posix/DescriptorHandle.h"
#include "platform/processes/posix/ProcessDescriptor.h"

namespace platform {
namespace {

/// waitid rejects other descriptors. ECHILD (not a child of this process) still proves that it is a pidfd.
bool IsProcessDescriptor(int descriptor) {
    siginfo_t ended{};
    return waitid(P_PIDFD, static_cast<id_t>(descriptor), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 || errno == ECHILD;
}

} // namespace

std::uint64_t NumberOfHandle(void* process) {
    const int descriptor = DescriptorOf(process);
    return descriptor < 0 ? 0 : static_cast<std::uint64_t>(descriptor);
}

Error AdoptProcess(std::uint64_t number, OwnedHandle& process) {
    if (number > INT_MAX || !IsProcessDescriptor(static_cast<int>(number))) {
        return ErrorFromCode(EBADF);
    }
    void* const handle = HandleOf(static_cast<int>(number));
    if (ProcessNumber(handle) == OwnProcessNumber()) {
        return ErrorFromCode(EINVAL);
    }
    process = OwnedHandle(handle);
    return {};
}

Error OpenProcessById(std::uint32_t id, OwnedHandle& process) {
    if (id == 0 || id > INT_MAX) {
        return ErrorFromCode(ESRCH);
    }
    if (id == OwnProcessNumber()) {
        return ErrorFromCode(EINVAL);
    }
    const int descriptor = OpenProcessDescriptor(static_cast<pid_t>(id));
    if (descriptor < 0) {
        return LastError();
    }
    process = OwnedHandle(HandleOf(descriptor));
    return {};
}

} // namespace platform
