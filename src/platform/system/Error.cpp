#include "platform/system/Error.h"

namespace platform {
namespace {

const wchar_t* OwnWords(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::None:
        return L"No error";
    case ErrorKind::NotFound:
        return L"No such file or folder";
    case ErrorKind::AccessDenied:
        return L"Access denied";
    case ErrorKind::AlreadyExists:
        return L"The name is already taken";
    case ErrorKind::InUse:
        return L"In use by another process";
    case ErrorKind::NoSpace:
        return L"No space left";
    case ErrorKind::TooLarge:
        return L"Too large";
    case ErrorKind::NotAbsolute:
        return L"The path is not absolute";
    case ErrorKind::NotSupported:
        return L"Not supported here";
    case ErrorKind::TooManyOpen:
        return L"Too many open files";
    case ErrorKind::Other:
        break;
    }
    return L"The operation failed";
}

} // namespace

std::wstring Error::Text() const {
    if (systemCode == 0) {
        return OwnWords(kind);
    }
    const std::wstring message = SystemMessage(systemCode);
    return message.empty() ? OwnWords(kind) + (L" (code " + std::to_wstring(systemCode) + L")") : message;
}

} // namespace platform
