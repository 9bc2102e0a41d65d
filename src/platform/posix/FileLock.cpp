#include "platform/FileLock.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/posix/SystemPath.h"

namespace platform {

Error FileLock::Take(const std::wstring& path) {
    Release();
    const int file = ::open(SystemPath(path).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) {
        return LastError();
    }
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const Error error = LastError();
        ::close(file);
        return error.systemCode == EWOULDBLOCK ? Error{ErrorKind::InUse, error.systemCode} : error;
    }
    handle = file;
    return {};
}

void FileLock::Release() {
    if (IsHeld()) {
        ::close(static_cast<int>(std::exchange(handle, invalidHandle)));
    }
}

} // namespace platform
