#include "platform/Environment.h"

#include <cstdlib>
#include <memory>
#include <string_view>

#include <windows.h>

namespace platform {
namespace {

bool IsUsable(const std::wstring& name) {
    return !name.empty() && name.find(L'=') == std::wstring::npos && name.find(L'\0') == std::wstring::npos;
}

struct BlockDeleter {
    void operator()(wchar_t* block) const { FreeEnvironmentStringsW(block); }
};

} // namespace

std::optional<std::wstring> GetEnvironment(const std::wstring& name) {
    // The runtime answers the question for the size with ERANGE: the size alone tells.
    std::size_t size = 0;
    if (IsUsable(name)) {
        _wgetenv_s(&size, nullptr, 0, name.c_str());
    }
    if (size == 0) {
        return std::nullopt;
    }
    std::wstring value(size, L'\0');
    _wgetenv_s(&size, value.data(), value.size(), name.c_str());
    value.resize(size == 0 ? 0 : size - 1);
    return value;
}

void SetEnvironment(const std::wstring& name, const std::wstring& value) {
    if (!IsUsable(name)) {
        return;
    }
    _wputenv_s(name.c_str(), value.c_str());
    // What child processes and other runtime libraries of this process see.
    SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str());
}

std::vector<std::pair<std::wstring, std::wstring>> AllEnvironment() {
    std::vector<std::pair<std::wstring, std::wstring>> variables;
    const std::unique_ptr<wchar_t, BlockDeleter> block(GetEnvironmentStringsW());
    const wchar_t* entry = block.get();
    while (entry != nullptr && *entry != L'\0') {
        const std::wstring_view text = entry;
        const std::size_t equals = text.find(L'=');
        // "=C:=C:\x" is how the system keeps the current folder of a drive.
        if (equals != std::wstring_view::npos && equals != 0) {
            variables.emplace_back(text.substr(0, equals), text.substr(equals + 1));
        }
        entry += text.size() + 1;
    }
    return variables;
}

} // namespace platform
