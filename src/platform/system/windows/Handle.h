#pragma once

#include <memory>
#include <string>

#include <windows.h>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

/// What the system hands out and takes back, and the results of its calls.
namespace platform {

/// Opens a file, directory or device (`CreateFileW`); null on failure.
inline OwnedFileHandle OpenFileHandle(const std::wstring& systemPath, DWORD access, DWORD share, DWORD disposition,
                                      DWORD flags, SECURITY_ATTRIBUTES* security = nullptr) {
    const HANDLE handle = CreateFileW(systemPath.c_str(), access, share, security, disposition, flags, nullptr);
    return OwnedFileHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

struct LocalFreer {
    void operator()(void* memory) const { LocalFree(memory); }
};

/// Memory allocated by the system, to be released with LocalFree.
template <typename T>
using LocalMemory = std::unique_ptr<T, LocalFreer>;

/// The error of a system call that returns FALSE on failure.
inline Error OutcomeOf(BOOL succeeded) {
    return succeeded != 0 ? Error{} : LastError();
}

} // namespace platform
