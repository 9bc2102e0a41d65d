#include "platform/files/DirectoryHandle.h"

#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/files/windows/SystemPath.h"

namespace platform {

Error DirectoryHandle::Open(const std::wstring& path) {
    // Without FILE_SHARE_DELETE, which a rename would need, too.
    const HANDLE handle =
        CreateFileW(SystemPath(path).c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return LastError();
    }
    directory = OwnedHandle(handle);
    pinnedPath = path;
    return IsDirectory(path) && !IsLink(path) ? Error{} : Error{ErrorKind::NotSupported, 0};
}

} // namespace platform
