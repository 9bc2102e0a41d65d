#include "platform/system/Environment.h"

#include <cstdlib>
#include <memory>
#include <string_view>

#include <windows.h>

#include "platform/system/EnvironmentCalls.h"

namespace platform {
namespace {

struct BlockDeleter {
    void operator()(wchar_t* block) const { FreeEnvironmentStringsW(block); }
};

} // namespace

std::optional<std::wstring> ReadVariable(const std::wstring& name) {
    // The size query returns ERANGE; only the size is used.
    std::size_t size = 0;
    _wgetenv_s(&size, nullptr, 0, name.c_str());
    if (size == 0) {
        return std::nullopt;
    }
    std::wstring value(size, L'\0');
    _wgetenv_s(&size, value.data(), value.size(), name.c_str());
    value.resize(size == 0 ? 0 : size - 1);
    return value;
}

// Sets the runtime's copy, and the system's, which child processes and other runtimes in this process see.
void WriteVariable(const std::wstring& name, const std::wstring& value) {
    _wputenv_s(name.c_str(), value.c_str());
    SetEnvironmentVariableW(name.c_str(), value.c_str());
}

void RemoveVariable(const std::wstring& name) {
    _wputenv_s(name.c_str(), L"");
    SetEnvironmentVariableW(name.c_str(), nullptr);
}

std::vector<std::pair<std::wstring, std::wstring>> AllEnvironment() {
    std::vector<std::pair<std::wstring, std::wstring>> variables;
    const std::unique_ptr<wchar_t, BlockDeleter> block(GetEnvironmentStringsW());
    const wchar_t* entry = block.get();
    while (entry != nullptr && *entry != L'\0') {
        const std::wstring_view text = entry;
        const std::size_t equals = text.find(L'=');
        // The system keeps the current directory of a drive in a variable such as "=C:=C:\x".
        if (equals != std::wstring_view::npos && equals != 0) {
            variables.emplace_back(text.substr(0, equals), text.substr(equals + 1));
        }
        entry += text.size() + 1;
    }
    return variables;
}

} // namespace platform
