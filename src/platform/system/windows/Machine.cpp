#include "platform/system/Machine.h"

#include <array>

#include <windows.h>

namespace platform {

std::wstring MachineName() {
    std::array<wchar_t, 256> name = {};
    auto size = static_cast<DWORD>(name.size());
    return GetComputerNameExW(ComputerNameDnsHostname, name.data(), &size) != 0 ? std::wstring(name.data(), size)
                                                                                : std::wstring();
}

std::wstring AccountName() {
    std::array<wchar_t, 257> name = {};
    auto size = static_cast<DWORD>(name.size());
    // The size includes the terminating zero.
    return GetUserNameW(name.data(), &size) != 0 ? std::wstring(name.data(), size - 1) : std::wstring();
}

/// Large pages on Windows need a privilege that users do not have.
void PreferLargePages(void*, std::size_t) {}

} // namespace platform
