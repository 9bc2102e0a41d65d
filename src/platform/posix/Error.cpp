#include "platform/Error.h"

#include <cerrno>
#include <cstring>

#include "platform/SystemMessage.h"
#include "platform/Text.h"

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

std::wstring SystemMessage(std::int64_t systemCode) {
    // Not strerror_r: it speaks the language of the locale, and log lines are in English.
    const char* message = strerrordesc_np(static_cast<int>(systemCode));
    return message == nullptr ? std::wstring() : FromUtf8(message);
}

} // namespace platform
