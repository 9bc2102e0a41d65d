#include "platform/processes/ForeignProcess.h"

#include <cerrno>
#include <climits>
#include <utility>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/processes/posix/ProcessFiles.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

/// waitid rejects other descriptors. ECHILD (not a child of this process) still proves that it is a pidfd.
bool IsProcessDescriptor(int descriptor) {
    siginfo_t ended{};
    return waitid(P_PIDFD, static_cast<id_t>(descriptor), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 || errno == ECHILD;
}

/// In clock ticks since boot; 0 if unknown.
std::int64_t StartOf(pid_t number) {
    constexpr std::size_t start = 22;
    return static_cast<std::int64_t>(ProcessStat(number).Number(start));
}

bool IsOwn(pid_t number) {
    struct stat status {};
    return stat(ProcessDirectory(number).c_str(), &status) == 0 && status.st_uid == geteuid();
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

ProcessIdentity OwnProcessIdentity() {
    return {static_cast<std::uint32_t>(getpid()), StartOf(getpid())};
}

/// Opens the pidfd first: the start time read afterwards belongs to the same process, or to a later one, whose start
/// time differs.
OwnedHandle OpenProcess(const ProcessIdentity& process) {
    const auto number = static_cast<pid_t>(process.number);
    if (number <= 0 || process.start == 0) {
        return {};
    }
    OwnedHandle opened(HandleOf(OpenProcessDescriptor(number)));
    const bool isMeant = opened && StartOf(number) == process.start && IsOwn(number) && IsProcessRunning(opened.Get());
    return isMeant ? std::move(opened) : OwnedHandle();
}

} // namespace platform
