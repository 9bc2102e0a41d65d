#pragma once

#include <cstdint>
#include <string>

/// The units that wide texts are made of. Pure functions, any thread.
namespace text {

inline constexpr std::uint32_t surrogateBegin = 0xD800;
inline constexpr std::uint32_t lowSurrogateBegin = 0xDC00;
inline constexpr std::uint32_t surrogateEnd = 0xE000;
inline constexpr std::uint32_t supplementaryBegin = 0x10000;
inline constexpr std::uint32_t lastCodePoint = 0x10FFFF;

/// Elements of a wide text are UTF-16 code units; otherwise whole characters.
inline constexpr bool hasUtf16Elements = sizeof(wchar_t) == sizeof(char16_t);

/// One element of a wide text as a number: wchar_t is unsigned on Windows and signed on Linux.
constexpr std::uint32_t Unit(wchar_t element) {
    if constexpr (hasUtf16Elements) {
        return static_cast<char16_t>(element);
    } else {
        return static_cast<char32_t>(element);
    }
}
constexpr std::uint32_t Unit(char16_t element) {
    return element;
}

constexpr bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= surrogateBegin && unit < lowSurrogateBegin;
}
constexpr bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= lowSurrogateBegin && unit < surrogateEnd;
}
constexpr bool IsSurrogate(std::uint32_t unit) {
    return unit >= surrogateBegin && unit < surrogateEnd;
}

/// The character that a high and a low surrogate make.
constexpr std::uint32_t JoinSurrogates(std::uint32_t high, std::uint32_t low) {
    return supplementaryBegin + ((high - surrogateBegin) << 10) + (low - lowSurrogateBegin);
}

/// Writes the UTF-16 units of a value of at most U+10FFFF, one or two, and returns the end behind them.
template <typename Element>
constexpr Element* PutUtf16(std::uint32_t value, Element* to) {
    if (value >= supplementaryBegin) {
        *to++ = static_cast<Element>(surrogateBegin + ((value - supplementaryBegin) >> 10));
        *to++ = static_cast<Element>(lowSurrogateBegin + (value & 0x3FF));
    } else {
        *to++ = static_cast<Element>(value);
    }
    return to;
}

/// Writes the wide elements of a value, one or two, and returns the end behind them.
constexpr wchar_t* PutWide(std::uint32_t value, wchar_t* to) {
    if constexpr (hasUtf16Elements) {
        return PutUtf16(value, to);
    } else {
        *to++ = static_cast<wchar_t>(value);
        return to;
    }
}

inline void AppendWide(std::wstring& text, std::uint32_t value) {
    wchar_t elements[2];
    text.append(elements, PutWide(value, elements));
}

} // namespace text
