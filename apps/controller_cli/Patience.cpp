#include "controller_cli/Patience.h"

#include <algorithm>
#include <cwchar>

namespace controller_cli {

std::chrono::seconds PatienceFrom(const std::optional<std::wstring>& variable) {
    constexpr std::chrono::seconds usual{20};
    constexpr long longest = 24L * 60 * 60;
    if (!variable) {
        return usual;
    }
    return std::chrono::seconds(std::clamp(std::wcstol(variable->c_str(), nullptr, 10), 0L, longest));
}

} // namespace controller_cli
