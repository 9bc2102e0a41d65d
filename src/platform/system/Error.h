#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// What a caller can do about a failed system call; the exact code is kept beside it for messages only.
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

/// The outcome of a system call: success, or why it failed. A small value, copied freely.
struct [[nodiscard]] Error {
    ErrorKind kind = ErrorKind::None;
    /// errno on Linux, GetLastError() on Windows; 0 when the failure is not the system's.
    std::int64_t systemCode = 0;

    /// True when something failed.
    explicit operator bool() const { return kind != ErrorKind::None; }

    /// One line for people: the system's own words where it has some ("No space left on device"), never empty.
    std::wstring Text() const;
};

/// The error of the last failed system call of this thread (errno, GetLastError()).
Error LastError();

/// The error for a system code (errno value on Linux, GetLastError() value on Windows).
Error ErrorFromCode(std::int64_t systemCode);

} // namespace platform
