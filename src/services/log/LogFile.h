#pragma once

#include <string>

#include "services/log/LogLevel.h"

/// The log file of this process. No function throws. Threads: any, at any time, including the end of the process.
namespace log_file {

/// Writes records to the file at `path` from now on; an empty path disables the file.
void UsePath(const std::wstring& path) noexcept;

/// Drops records below `level` from now on. Writes records to the file at `path`, unless `UsePath` was called; takes a
/// new path at most once a second.
void UseSettings(Level level, const std::wstring& path) noexcept;

/// Makes `WantsSettings` return true immediately.
void ForgetSettings() noexcept;

/// Returns true if `UseSettings` should be called: before its first call, then once a second until `UsePath` is called.
bool WantsSettings() noexcept;

/// Returns true if a record of this level is written; `Info` and above before the first call of `UseSettings`. Takes no
/// lock and makes no system call.
bool Takes(Level level) noexcept;

/// Appends one record: UTC time, level, thread, message. The record has been passed to the system when this returns.
void Write(Level level, const std::wstring& message) noexcept;

} // namespace log_file
