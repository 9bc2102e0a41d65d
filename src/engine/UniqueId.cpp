#include "engine/UniqueId.h"

#include <array>
#include <charconv>

namespace {

std::wstring HexadecimalText(std::uint32_t number) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    return {digits.begin(), end};
}

} // namespace

std::wstring DrawUniqueId(const std::function<std::uint32_t()>& draw,
                          const std::function<bool(const std::wstring&)>& isTaken, std::set<std::wstring>& known) {
    while (true) {
        std::wstring id = HexadecimalText(draw());
        if (!isTaken(id) && known.insert(id).second) {
            return id;
        }
    }
}
