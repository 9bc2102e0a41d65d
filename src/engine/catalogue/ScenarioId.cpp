#include "engine/catalogue/ScenarioId.h"

#include "text/CodeUnits.h"

#include <array>
#include <charconv>

namespace {

constexpr std::uint64_t offsetBasis = 0xcbf29ce484222325U;
constexpr std::uint64_t prime = 0x100000001b3U;

std::uint64_t WithByte(std::uint64_t hash, unsigned byte) {
    return (hash ^ byte) * prime;
}

std::uint64_t WithUnit(std::uint64_t hash, char16_t unit) {
    return WithByte(WithByte(hash, unit & 0xffU), static_cast<unsigned>(unit) >> 8U);
}

/// The element of a wide text, which is one unit or a pair.
std::uint64_t WithElement(std::uint64_t hash, wchar_t element) {
    const std::uint32_t unit = text::Unit(element);
    // A high byte of zero, which most units have, only multiplies: both multiplications are done as one.
    if (unit <= 0xffU) {
        return (hash ^ unit) * (prime * prime);
    }
    std::array<char16_t, 2> pair;
    const char16_t* const end =
        text::PutUtf16(unit <= text::lastCodePoint ? unit : text::replacementCharacter, pair.data());
    hash = WithUnit(hash, pair[0]);
    return end == pair.data() + 1 ? hash : WithUnit(hash, pair[1]);
}

} // namespace

std::uint64_t HashOf(std::wstring_view text) {
    std::uint64_t hash = offsetBasis;
    for (const wchar_t element : text) {
        hash = WithElement(hash, element);
    }
    return hash;
}

std::wstring ScenarioId(const std::wstring& labelledPath) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), HashOf(labelledPath)).ptr;
    return {digits.data(), end};
}
