#include "platform/files/FileLock.h"

#include <utility>

#include <windows.h>

#include "platform/files/windows/SystemPath.h"

namespace platform {
namespace {

HANDLE Open(const std::wstring& path, DWORD disposition) {
    return ::CreateFileW(SystemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                         FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

HANDLE HandleOf(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

} // namespace

/// The lock is a file opened for writing without write sharing; the system closes it with the process. Others may read
/// it.
Error FileLock::Take(const std::wstring& path) {
    Release();
    HANDLE const file = Open(path, OPEN_ALWAYS);
    if (file == INVALID_HANDLE_VALUE) {
        return LastError();
    }
    handle = reinterpret_cast<std::intptr_t>(file);
    place = path;
    return {};
}

void FileLock::Release() {
    if (IsHeld()) {
        ::CloseHandle(HandleOf(std::exchange(handle, invalidHandle)));
    }
}

Error FileLock::Write(std::string_view text) {
    HANDLE const file = HandleOf(handle);
    DWORD written = 0;
    const bool isWritten = ::SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN) != 0 &&
                           ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != 0 &&
                           ::SetEndOfFile(file) != 0;
    return isWritten ? Error{} : LastError();
}

/// If another process has taken the lock in between, the file is not shared for deletion and stays.
void FileLock::Remove() {
    if (IsHeld()) {
        Release();
        ::DeleteFileW(SystemPath(place).c_str());
    }
}

/// A file that is open without FILE_SHARE_DELETE keeps its name, and so do the directories above it.
bool FileLock::IsInPlace() const {
    return IsHeld();
}

bool IsLocked(const std::wstring& path) {
    HANDLE const file = Open(path, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        return LastError().kind == ErrorKind::InUse;
    }
    ::CloseHandle(file);
    return false;
}

} // namespace platform
