#pragma once

#include <optional>
#include <string>

namespace platform {

/// The current value of an environment variable in the C runtime; nothing if it is not set.
[[nodiscard]] std::optional<std::wstring> GetEnvironment(const std::wstring& name);

/// Sets a variable of this process; an empty value removes it. Ignores a name that is empty or contains "=". Must not
/// run while other threads read the environment.
void SetEnvironment(const std::wstring& name, const std::wstring& value);

} // namespace platform
