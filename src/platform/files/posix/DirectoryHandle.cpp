#include "platform/files/DirectoryHandle.h"

#include <cerrno>

#include <fcntl.h>

#include "platform/files/FileSystem.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {

Error DirectoryHandle::Open(const std::wstring& path) {
    const int descriptor = open(SystemPath(path).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor == -1) {
        const Error error = LastError();
        return IsLink(path) ? Error{ErrorKind::NotSupported, error.systemCode} : error;
    }
    directory = OwnedHandle(HandleOf(descriptor));
    // This path resolves to the open directory itself, not to its name.
    pinnedPath = L"\\proc\\self\\fd\\" + std::to_wstring(descriptor);
    return {};
}

} // namespace platform
