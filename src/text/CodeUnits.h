#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The units that wide texts are made of, and the characters that they make. Pure functions, any thread.
namespace text {

inline constexpr std::uint32_t surrogateBegin = 0xD800;
inline constexpr std::uint32_t lowSurrogateBegin = 0xDC00;
inline constexpr std::uint32_t surrogateEnd = 0xE000;
inline constexpr std::uint32_t supplementaryBegin = 0x10000;
inline constexpr std::uint32_t lastCodePoint = 0x10FFFF;
/// Stands for what is no character.
inline constexpr std::uint32_t replacementCharacter = 0xFFFD;

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

/// True for what strict UTF-8 can carry: no surrogate, nothing beyond U+10FFFF.
constexpr bool IsCharacter(std::uint32_t value) {
    return value <= lastCodePoint && !IsSurrogate(value);
}

/// The character that a high and a low surrogate make.
constexpr std::uint32_t JoinSurrogates(std::uint32_t high, std::uint32_t low) {
    return supplementaryBegin + ((high - surrogateBegin) << 10) + (low - lowSurrogateBegin);
}

/// A value taken from the beginning of a text, and the elements of the text that it took.
struct CodePoint {
    std::uint32_t value = 0;
    std::size_t length = 0;
};

/// The code point that `units`, which are not empty, begin with: two elements that are a surrogate pair are one, an
/// unpaired surrogate is its own value. `View` is a view of char16_t or wchar_t.
template <typename View>
constexpr CodePoint TakeUtf16(View units) {
    const std::uint32_t first = Unit(units[0]);
    if (IsHighSurrogate(first) && units.size() > 1 && IsLowSurrogate(Unit(units[1]))) {
        return {JoinSurrogates(first, Unit(units[1])), 2};
    }
    return {first, 1};
}

/// The value that a wide text, which is not empty, begins with. Only where elements are UTF-16 are two surrogates one
/// character; elsewhere each element is its own value, whatever it is.
constexpr CodePoint TakeWide(std::wstring_view text) {
    if constexpr (hasUtf16Elements) {
        return TakeUtf16(text);
    } else {
        return {Unit(text[0]), 1};
    }
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
