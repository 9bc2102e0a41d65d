#include "platform/FileLock.h"

#include <utility>

#include <windows.h>

#include "platform/windows/SystemPath.h"

namespace platform {

/// A file opened without sharing is the lock: the system closes it with the process.
Error FileLock::Take(const std::wstring& path) {
    Release();
    HANDLE const file = ::CreateFileW(SystemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return LastError();
    }
    handle = reinterpret_cast<std::intptr_t>(file);
    return {};
}

void FileLock::Release() {
    if (IsHeld()) {
        ::CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle, invalidHandle)));
    }
}

} // namespace platform
