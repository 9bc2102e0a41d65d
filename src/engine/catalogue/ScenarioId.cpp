#include "engine/catalogue/ScenarioId.h"

#include "text/Text.h"

namespace {

constexpr std::uint64_t offsetBasis = 0xcbf29ce484222325U;
constexpr std::uint64_t prime = 0x100000001b3U;

std::uint64_t WithByte(std::uint64_t hash, unsigned byte) {
    return (hash ^ byte) * prime;
}

} // namespace

std::uint64_t HashOf(std::u16string_view units) {
    std::uint64_t hash = offsetBasis;
    for (const char16_t unit : units) {
        hash = WithByte(hash, unit & 0xffU);
        hash = WithByte(hash, static_cast<unsigned>(unit) >> 8U);
    }
    return hash;
}

std::wstring ScenarioId(const std::wstring& labelledPath) {
    const std::string digits = std::to_string(HashOf(text::ToUtf16(labelledPath)));
    return {digits.begin(), digits.end()};
}
