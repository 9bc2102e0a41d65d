#include "platform/system/Environment.h"

#include <cstdlib>
#include <string_view>

#include <unistd.h>

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

std::vector<std::pair<std::wstring, std::wstring>> AllEnvironment() {
    std::vector<std::pair<std::wstring, std::wstring>> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string_view::npos && equals != 0) {
            variables.emplace_back(text::FromUtf8(text.substr(0, equals)), text::FromUtf8(text.substr(equals + 1)));
        }
    }
    return variables;
}

} // namespace platform
