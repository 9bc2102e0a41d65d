#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// The value of an environment variable; nothing when it is not set. As the C runtime sees it, at this moment.
[[nodiscard]] std::optional<std::wstring> GetEnvironment(const std::wstring& name);

/// Sets a variable of this process; an empty value removes it. A name that is empty or holds "=" is ignored. Not while
/// other threads read the environment.
void SetEnvironment(const std::wstring& name, const std::wstring& value);

/// All variables of this process.
std::vector<std::pair<std::wstring, std::wstring>> AllEnvironment();

} // namespace platform
