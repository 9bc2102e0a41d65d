#include "services/ResponseTimeout.h"

#include <algorithm>
#include <cwchar>

#include "platform/system/Environment.h"

namespace response_timeout {

std::chrono::seconds From(const std::optional<std::wstring>& variable) {
    constexpr std::chrono::seconds usual{20};
    constexpr long longest = 24L * 60 * 60;
    if (!variable) {
        return usual;
    }
    return std::chrono::seconds(std::clamp(std::wcstol(variable->c_str(), nullptr, 10), 0L, longest));
}

std::chrono::seconds FromEnvironment() {
    return From(platform::GetEnvironment(L"QRV_KT_WAIT_RESPONSE_SEC"));
}

} // namespace response_timeout
