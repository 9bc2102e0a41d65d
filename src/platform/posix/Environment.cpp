#include "platform/Environment.h"

#include <cstdlib>
#include <string_view>

#include <unistd.h>

#include "platform/Text.h"

namespace platform {
namespace {

bool IsUsable(const std::wstring& name) {
    return !name.empty() && name.find(L'=') == std::wstring::npos && name.find(L'\0') == std::wstring::npos;
}

} // namespace

std::optional<std::wstring> GetEnvironment(const std::wstring& name) {
    const char* const value = IsUsable(name) ? std::getenv(ToUtf8(name).c_str()) : nullptr;
    return value == nullptr ? std::nullopt : std::optional(FromUtf8(value));
}

void SetEnvironment(const std::wstring& name, const std::wstring& value) {
    if (!IsUsable(name)) {
        return;
    }
    if (value.empty()) {
        unsetenv(ToUtf8(name).c_str());
    } else {
        setenv(ToUtf8(name).c_str(), ToUtf8(value).c_str(), 1);
    }
}

std::vector<std::pair<std::wstring, std::wstring>> AllEnvironment() {
    std::vector<std::pair<std::wstring, std::wstring>> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string_view::npos && equals != 0) {
            variables.emplace_back(FromUtf8(text.substr(0, equals)), FromUtf8(text.substr(equals + 1)));
        }
    }
    return variables;
}

} // namespace platform
