#include "platform/system/Error.h"

#include <windows.h>

namespace platform {
namespace {

ErrorKind KindOf(DWORD code) {
    switch (code) {
    case ERROR_SUCCESS:
        return ErrorKind::None;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
    case ERROR_MOD_NOT_FOUND:
        return ErrorKind::NotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_PRIVILEGE_NOT_HELD:
        return ErrorKind::AccessDenied;
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return ErrorKind::AlreadyExists;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_BUSY:
    case ERROR_PIPE_BUSY:
    case ERROR_USER_MAPPED_FILE:
        return ErrorKind::InUse;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ErrorKind::NoSpace;
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_FILE_TOO_LARGE:
        return ErrorKind::TooLarge;
    case ERROR_BAD_PATHNAME:
        return ErrorKind::NotAbsolute;
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_FUNCTION:
    case ERROR_CALL_NOT_IMPLEMENTED:
    case ERROR_NOT_SAME_DEVICE:
        return ErrorKind::NotSupported;
    case ERROR_TOO_MANY_OPEN_FILES:
        return ErrorKind::TooManyOpen;
    default:
        return ErrorKind::Other;
    }
}

constexpr DWORD english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
constexpr DWORD userLanguage = 0;

std::wstring MessageIn(DWORD language, DWORD code) {
    wchar_t buffer[512];
    // MAX_WIDTH_MASK: no line breaks within the text.
    constexpr DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    const DWORD length = FormatMessageW(flags, nullptr, code, language, buffer, DWORD{std::size(buffer)}, nullptr);
    return {buffer, length};
}

} // namespace

Error LastError() {
    return ErrorFromCode(GetLastError());
}

Error ErrorFromCode(std::int64_t systemCode) {
    return {KindOf(static_cast<DWORD>(systemCode)), systemCode};
}

std::wstring SystemMessage(std::int64_t systemCode) {
    const auto code = static_cast<DWORD>(systemCode);
    std::wstring message = MessageIn(english, code);
    if (message.empty()) {
        message = MessageIn(userLanguage, code);
    }
    message.erase(message.find_last_not_of(L" .\r\n") + 1);
    return message;
}

} // namespace platform
