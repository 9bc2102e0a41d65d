#pragma once

#include <string>

#include "services/log/LogLevel.h"

/// The one log file of this process. Any thread, at any time, also while the process ends; nothing is thrown.
namespace log_file {

/// From now on records go to the file at `path`; an empty path: nowhere.
void UsePath(const std::wstring& path) noexcept;

/// As `UsePath`, but of no effect once that was called.
void UseDefaultPath(const std::wstring& path) noexcept;

/// True when `UseDefaultPath` should be called: as long as it was not, and then once a second, until `UsePath` is.
bool WantsDefaultPath() noexcept;

/// Makes `WantsDefaultPath` true again at once.
void ForgetDefaultPath() noexcept;

/// From now on records below this level are dropped: the level of the settings in force, which those who read them
/// give.
void UseLevel(Level level) noexcept;

/// Makes `WantsLevel` true again.
void ForgetLevel() noexcept;

/// True as long as nobody has said which level to use; `Info` holds meanwhile.
bool WantsLevel() noexcept;

/// True when a record of this level is written. Costs next to nothing: no lock, no look at a file.
bool Takes(Level level) noexcept;

/// Appends one record: UTC time, level, thread, message. It has reached the system when this returns.
void Write(Level level, const std::wstring& message) noexcept;

} // namespace log_file
