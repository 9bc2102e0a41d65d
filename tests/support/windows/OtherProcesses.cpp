#include "support/OtherProcesses.h"

#include <windows.h>

namespace test_support {

platform::OwnedHandle OpenProcessByNumber(std::uint32_t number) {
    return platform::OwnedHandle(OpenProcess(SYNCHRONIZE, FALSE, number));
}

void KillProcess(void* process) {
    TerminateProcess(process, 1);
}

} // namespace test_support
