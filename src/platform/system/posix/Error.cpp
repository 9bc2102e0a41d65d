#include "platform/system/Error.h"

#include <cerrno>
#include <cstring>

#include <sys/resource.h>

#include "text/Text.h"

namespace platform {
namespace {

ErrorKind KindOf(int code) {
    switch (code) {
    case 0:
        return ErrorKind::None;
    case ENOENT:
    case ENOTDIR:
        return ErrorKind::NotFound;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorKind::AccessDenied;
    case EEXIST:
        return ErrorKind::AlreadyExists;
    case EBUSY:
    case ETXTBSY:
    case EADDRINUSE:
        return ErrorKind::InUse;
    case ENOSPC:
    case EDQUOT:
        return ErrorKind::NoSpace;
    case EFBIG:
    case ENAMETOOLONG:
        return ErrorKind::TooLarge;
    case EOPNOTSUPP:
    case ENOSYS:
    case EXDEV:
        return ErrorKind::NotSupported;
    case EMFILE:
    case ENFILE:
        return ErrorKind::TooManyOpen;
    default:
        return ErrorKind::Other;
    }
}

} // namespace

Error LastError() {
    return ErrorFromCode(errno);
}

Error ErrorFromCode(std::int64_t systemCode) {
    return {KindOf(static_cast<int>(systemCode)), systemCode};
}

namespace {

/// Names the limit and how to display it; the system's text does not.
std::wstring OpenFilesLimit() {
    rlimit limit = {};
    return getrlimit(RLIMIT_NOFILE, &limit) == 0
               ? L": this process may have " + std::to_wstring(limit.rlim_cur) + L" (ulimit -n)"
               : std::wstring();
}

} // namespace

std::wstring SystemMessage(std::int64_t systemCode) {
    // Not strerror_r: its text depends on the locale, and log lines are in English.
    const char* message = strerrordesc_np(static_cast<int>(systemCode));
    if (message == nullptr) {
        return {};
    }
    return text::FromUtf8(message) + (systemCode == EMFILE ? OpenFilesLimit() : std::wstring());
}

} // namespace platform
