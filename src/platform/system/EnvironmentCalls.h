#pragma once

#include <optional>
#include <string>

/// The system calls, for names that the system accepts.
namespace platform {

[[nodiscard]] std::optional<std::wstring> ReadVariable(const std::wstring& name);
void WriteVariable(const std::wstring& name, const std::wstring& value);
void RemoveVariable(const std::wstring& name);

} // namespace platform
