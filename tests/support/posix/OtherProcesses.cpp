#include "support/OtherProcesses.h"

#include <signal.h>

#include "platform/Process.h"
#include "platform/posix/DescriptorHandle.h"
#include "platform/posix/ProcessDescriptor.h"

namespace test_support {

platform::OwnedHandle OpenProcessByNumber(std::uint32_t number) {
    const int descriptor = platform::OpenProcessDescriptor(static_cast<pid_t>(number));
    return descriptor < 0 ? platform::OwnedHandle() : platform::OwnedHandle(platform::HandleOf(descriptor));
}

void KillProcess(void* process) {
    kill(static_cast<pid_t>(platform::ProcessNumber(process)), SIGKILL);
}

} // namespace test_support
