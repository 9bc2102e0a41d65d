#include "platform/system/Browser.h"

#include <algorithm>

namespace platform {

bool IsWebAddress(const std::wstring& address) {
    const bool isWeb = address.starts_with(L"http://") || address.starts_with(L"https://");
    return isWeb && std::all_of(address.begin(), address.end(),
                                [](wchar_t letter) { return letter > L' ' && letter < 0x7f && letter != L'"'; });
}

} // namespace platform
