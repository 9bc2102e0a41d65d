#include "platform/system/windows/UserSid.h"

#include <cstddef>
#include <vector>

#include <windows.h>

#include <sddl.h>

#include "platform/system/OwnedHandle.h"
#include "platform/system/windows/Handle.h"

namespace platform {

std::wstring SidText(void* sid) {
    wchar_t* text = nullptr;
    if (ConvertSidToStringSidW(sid, &text) == 0) {
        return {};
    }
    const LocalMemory<wchar_t> owned(text);
    return owned.get();
}

std::wstring UserSidOf(void* process) {
    HANDLE token = nullptr;
    if (OpenProcessToken(process, TOKEN_QUERY, &token) == 0) {
        return {};
    }
    const OwnedHandle owned(token);
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    // The identifier that TOKEN_USER points to is in the same buffer.
    std::vector<std::byte> buffer(size);
    if (size < sizeof(TOKEN_USER) || GetTokenInformation(token, TokenUser, buffer.data(), size, &size) == 0) {
        return {};
    }
    return SidText(reinterpret_cast<const TOKEN_USER*>(buffer.data())->User.Sid);
}

} // namespace platform
