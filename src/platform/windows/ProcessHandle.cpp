#include "platform/ProcessHandle.h"

#include <windows.h>

namespace platform {

bool IsProcessRunning(void* process) {
    return process != nullptr && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
}

void CloseProcessHandle(void* process) {
    if (process != nullptr) {
        CloseHandle(process);
    }
}

} // namespace platform
