#include "platform/system/Environment.h"

#include <cstdlib>

#include "platform/system/EnvironmentCalls.h"
#include "text/Text.h"

namespace platform {

std::optional<std::wstring> ReadVariable(const std::wstring& name) {
    const char* const value = std::getenv(text::ToUtf8(name).c_str());
    return value == nullptr ? std::nullopt : std::optional(text::FromUtf8(value));
}

void WriteVariable(const std::wstring& name, const std::wstring& value) {
    setenv(text::ToUtf8(name).c_str(), text::ToUtf8(value).c_str(), 1);
}

void RemoveVariable(const std::wstring& name) {
    unsetenv(text::ToUtf8(name).c_str());
}

} // namespace platform
