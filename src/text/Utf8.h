#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/CodeUnits.h"

/// Single values in UTF-8 and in WTF-8, which encodes surrogates like other values. Pure functions; threads: any.
namespace text {

enum class Surrogates : std::int32_t { Refused, Allowed };

/// Returns the sequence length that a first byte announces; 0 for a byte that cannot begin a sequence.
constexpr std::size_t Utf8Length(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

constexpr bool IsUtf8Continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The second byte excludes overlong forms, values beyond U+10FFFF and surrogates.
template <Surrogates surrogates>
constexpr bool IsSecondByte(unsigned char first, unsigned char second) {
    const bool isLimited = surrogates == Surrogates::Refused && first == 0xED;
    const unsigned char lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = isLimited ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

/// Returns the length of the valid sequence at the beginning of `bytes`, which must not be empty; 0 for a stray byte, a
/// truncated or overlong sequence, or a value beyond U+10FFFF.
template <Surrogates surrogates>
constexpr std::size_t SequenceLength(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = Utf8Length(first);
    if (length > bytes.size() ||
        (length > 1 && !IsSecondByte<surrogates>(first, static_cast<unsigned char>(bytes[1])))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (!IsUtf8Continuation(bytes[i])) {
            return 0;
        }
    }
    return length;
}

/// Returns the value of a valid sequence.
constexpr std::uint32_t Utf8Value(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    std::uint32_t value = sequence.size() == 1 ? first : first & (0x7FU >> sequence.size());
    for (const char byte : sequence.substr(1)) {
        value = value << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return value;
}

/// Reads the first value of `bytes`, which must not be empty; the length is 0 if no valid sequence begins there.
template <Surrogates surrogates = Surrogates::Refused>
constexpr CodePoint TakeUtf8(std::string_view bytes) {
    const std::size_t length = SequenceLength<surrogates>(bytes);
    return length == 0 ? CodePoint{} : CodePoint{Utf8Value(bytes.substr(0, length)), length};
}

/// Writes the one to four bytes of a value of at most U+10FFFF and returns the position after them.
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

/// Decodes bytes to wide text; returns nothing if any sequence is invalid.
template <Surrogates surrogates>
std::optional<std::wstring> DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const CodePoint taken = TakeUtf8<surrogates>(bytes);
        if (taken.length == 0) {
            return std::nullopt;
        }
        AppendWide(text, taken.value);
        bytes.remove_prefix(taken.length);
    }
    return text;
}

} // namespace text
