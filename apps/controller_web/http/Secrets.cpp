#include "controller_web/http/Secrets.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>

#include "platform/system/Environment.h"
#include "text/Hexadecimal.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::size_t bytesOfSecret = 32;

} // namespace

std::string NewSecret() {
    std::random_device random(platform::randomSource);
    std::array<std::uint8_t, bytesOfSecret> bytes{};
    std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<std::uint8_t>(random()); });
    return text::ToUtf8(text::HexadecimalText(bytes));
}

bool IsSecret(std::string_view text) {
    return text.size() == 2 * bytesOfSecret && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

} // namespace web
