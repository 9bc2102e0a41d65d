#pragma once

#include <string>

#include "services/log/LogLevel.h"

/// The log file of this process. No function throws. Threads: any, at any time, including the end of the process.
namespace log_file {

/// Writes records to the file at `path` from now on; an empty path disables the file.
void UsePath(const std::wstring& path) noexcept;

/// As `UsePath`, but has no effect after a call of `UsePath`.
void UseDefaultPath(const std::wstring& path) noexcept;

/// Returns true if `UseDefaultPath` should be called: before its first call, then once a second until `UsePath` is
/// called.
bool WantsDefaultPath() noexcept;

/// Makes `WantsDefaultPath` return true immediately.
void ForgetDefaultPath() noexcept;

/// Drops records below this level from now on. Called with the level of the settings by the code that reads them.
void UseLevel(Level level) noexcept;

/// Makes `WantsLevel` return true again.
void ForgetLevel() noexcept;

/// Returns true until `UseLevel` is called; the level is `Info` until then.
bool WantsLevel() noexcept;

/// Returns true if a record of this level is written. Takes no lock and makes no system call.
bool Takes(Level level) noexcept;

/// Appends one record: UTC time, level, thread, message. The record has been passed to the system when this returns.
void Write(Level level, const std::wstring& message) noexcept;

} // namespace log_file
