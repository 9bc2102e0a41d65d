#include "platform/files/FileLock.h"

#include <windows.h>

#include "platform/files/windows/SystemPath.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

OwnedFileHandle Open(const std::wstring& path, DWORD disposition) {
    return OpenFileHandle(SystemPath(path), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, disposition,
                          FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT);
}

} // namespace

/// The lock is a file opened for writing without write sharing; the system closes it with the process. Others may read
/// it.
Error FileLock::Take(const std::wstring& path) {
    Release();
    handle = Open(path, OPEN_ALWAYS);
    if (!handle) {
        return LastError();
    }
    place = path;
    return {};
}

Error FileLock::Write(std::string_view text) {
    HANDLE const file = handle.Get();
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
    const OwnedFileHandle file = Open(path, OPEN_EXISTING);
    return !file && LastError().kind == ErrorKind::InUse;
}

} // namespace platform
