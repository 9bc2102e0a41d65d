#pragma once

#include <cstdint>
#include <string>

/// The one log file of this process. Any thread, at any time, also while the process ends; nothing is thrown.
namespace log_file {

enum class Level : std::int32_t { Debug, Info, Warning, Error };

/// From now on records go to the file at `path`; an empty path: nowhere.
void UsePath(const std::wstring& path) noexcept;

/// As `UsePath`, but of no effect once that was called.
void UseDefaultPath(const std::wstring& path) noexcept;

/// True when `UseDefaultPath` should be called: as long as it was not, and then once a second, until `UsePath` is.
bool WantsDefaultPath() noexcept;

/// Makes `WantsDefaultPath` true again at once.
void ForgetDefaultPath() noexcept;

/// Appends one record: UTC time, level, thread, message. It has reached the system when this returns.
void Write(Level level, const std::wstring& message) noexcept;

} // namespace log_file
