#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// What a caller can do about a failed system call. The exact code is kept for messages only.
enum class ErrorKind : std::int32_t {
    None,
    NotFound,
    AccessDenied,
    AlreadyExists,
    InUse,
    NoSpace,
    TooLarge,
    NotAbsolute,
    NotSupported,
    TooManyOpen,
    Other
};

/// The result of a system call: success, or why it failed. A small value type.
struct [[nodiscard]] Error {
    ErrorKind kind = ErrorKind::None;
    /// errno on Linux, GetLastError() on Windows; 0 if the failure does not come from the system.
    std::int64_t systemCode = 0;

    /// True on success.
    explicit operator bool() const { return kind == ErrorKind::None; }

    /// One line for people: the system's text if it has one ("No space left on device"). Never empty.
    std::wstring Text() const;
};

/// The error of this thread's last failed system call (errno, GetLastError()).
Error LastError();

/// The error for a system code (errno on Linux, GetLastError() on Windows).
Error ErrorFromCode(std::int64_t systemCode);

/// The system's text for a code (errno, GetLastError()) on one line, in English if available; empty if there is none.
std::wstring SystemMessage(std::int64_t systemCode);

} // namespace platform
