#include "platform/system/OwnedHandle.h"

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

void CloseFileHandle(void* file) {
    CloseProcessHandle(file);
}

void* CopyHandle(void* handle) {
    HANDLE copy = nullptr;
    const bool isCopied = handle != nullptr && DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copy,
                                                               0, FALSE, DUPLICATE_SAME_ACCESS) != 0;
    return isCopied ? copy : nullptr;
}

} // namespace platform
