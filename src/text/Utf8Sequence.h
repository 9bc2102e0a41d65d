#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/CodeUnits.h"

/// How one value stands in UTF-8, surrogates in the scheme of the other values: who must not have them refuses them.
/// Pure functions, any thread.
namespace text {

/// The length that a first byte announces; 0 for one that begins no sequence.
constexpr std::size_t Utf8Length(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

constexpr bool IsUtf8Continuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

/// The value of a sequence whose bytes are known to be valid.
constexpr std::uint32_t Utf8Value(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    std::uint32_t value = sequence.size() == 1 ? first : first & (0x7FU >> sequence.size());
    for (const char byte : sequence.substr(1)) {
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return value;
}

struct Utf8Sequence {
    std::uint32_t value = 0;
    std::size_t length = 0; // 0: not valid
};

/// The sequence that `bytes` begin with: not valid when stray, cut off, overlong or beyond U+10FFFF.
constexpr Utf8Sequence TakeUtf8(std::string_view bytes) {
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, supplementaryBegin};
    const std::size_t length = Utf8Length(static_cast<unsigned char>(bytes[0]));
    if (length == 0 || length > bytes.size()) {
        return {};
    }
    for (const char byte : bytes.substr(1, length - 1)) {
        if (!IsUtf8Continuation(static_cast<unsigned char>(byte))) {
            return {};
        }
    }
    const std::uint32_t value = Utf8Value(bytes.substr(0, length));
    return value >= smallest[length] && value <= lastCodePoint ? Utf8Sequence{value, length} : Utf8Sequence{};
}

/// Writes the bytes of a value of at most U+10FFFF, at most four, and returns the end behind them.
constexpr char* PutUtf8(std::uint32_t value, char* to) {
    const auto put = [&to](std::uint32_t byte) { *to++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (value < 0x80) {
        put(value);
        return to;
    }
    if (value < 0x800) {
        put(0xC0 | value >> 6);
    } else {
        if (value < supplementaryBegin) {
            put(0xE0 | value >> 12);
        } else {
            put(0xF0 | value >> 18);
            put(0x80 | (value >> 12 & 0x3F));
        }
        put(0x80 | (value >> 6 & 0x3F));
    }
    put(0x80 | (value & 0x3F));
    return to;
}

inline void AppendUtf8(std::string& bytes, std::uint32_t value) {
    char sequence[4];
    bytes.append(sequence, PutUtf8(value, sequence));
}

} // namespace text
