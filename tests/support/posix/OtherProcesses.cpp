#include "support/OtherProcesses.h"

#include <csignal>

#include "platform/posix/DescriptorHandle.h"
#include "platform/posix/ProcessDescriptor.h"

namespace test_support {

platform::OwnedHandle OpenProcessByNumber(std::uint32_t number) {
    const int descriptor = platform::OpenProcessDescriptor(static_cast<pid_t>(number));
    return descriptor < 0 ? platform::OwnedHandle() : platform::OwnedHandle(platform::HandleOf(descriptor));
}

void KillProcess(void* process) {
    // By its descriptor: the number of one that has ended may be somebody else's.
    pidfd_send_signal(platform::DescriptorOf(process), SIGKILL, nullptr, 0);
}

} // namespace test_support
