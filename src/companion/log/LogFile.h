#pragma once

#include <cstdint>
#include <string>

/// The one log file of this process. Any thread, at any time, also while the process ends; nothing is thrown.
namespace log_file {

enum class Level : std::int32_t { Debug, Info, Warning, Error };

/// From now on records go to the file at `path`.
void UsePath(const std::wstring& path) noexcept;

/// Appends one record: UTC time, level, thread, message. It has reached the system when this returns.
void Write(Level level, const std::wstring& message) noexcept;

} // namespace log_file
