#include "platform/system/Environment.h"

#include <cstdlib>

#include <windows.h>

#include "platform/system/EnvironmentCalls.h"

namespace platform {

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

} // namespace platform
