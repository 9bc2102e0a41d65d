#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Code units and code points of wide text. Pure functions; threads: any.
namespace text {

inline constexpr std::uint32_t surrogateBegin = 0xD800;
inline constexpr std::uint32_t lowSurrogateBegin = 0xDC00;
inline constexpr std::uint32_t surrogateEnd = 0xE000;
inline constexpr std::uint32_t supplementaryBegin = 0x10000;
inline constexpr std::uint32_t lastCodePoint = 0x10FFFF;
/// Replaces values that are not characters.
inline constexpr std::uint32_t replacementCharacter = 0xFFFD;

/// True if the elements of wide text are UTF-16 code units; false if they are whole code points.
inline constexpr bool hasUtf16Elements = sizeof(wchar_t) == sizeof(char16_t);

/// Returns one element of a wide text as a number: wchar_t is unsigned on Windows and signed on Linux.
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

/// True for a value that strict UTF-8 can encode: not a surrogate, at most U+10FFFF.
constexpr bool IsCharacter(std::uint32_t value) {
    return value <= lastCodePoint && !IsSurrogate(value);
}

/// Returns the character encoded by a surrogate pair.
constexpr std::uint32_t JoinSurrogates(std::uint32_t high, std::uint32_t low) {
    return supplementaryBegin + ((high - surrogateBegin) << 10) + (low - lowSurrogateBegin);
}

/// A value read from the beginning of a text, and the number of elements read.
struct CodePoint {
    std::uint32_t value = 0;
    std::size_t length = 0;
};

/// Reads the first code point of `units`, which must not be empty: a surrogate pair is one code point, an unpaired
/// surrogate is its own value. `View` is a view of char16_t or wchar_t.
template <typename View>
constexpr CodePoint TakeUtf16(View units) {
    const std::uint32_t first = Unit(units[0]);
    if (IsHighSurrogate(first) && units.size() > 1 && IsLowSurrogate(Unit(units[1]))) {
        return {JoinSurrogates(first, Unit(units[1])), 2};
    }
    return {first, 1};
}

/// Reads the first value of `text`, which must not be empty. A surrogate pair is one character only where elements are
/// UTF-16; elsewhere each element is its own value.
constexpr CodePoint TakeWide(std::wstring_view text) {
    if constexpr (hasUtf16Elements) {
        return TakeUtf16(text);
    } else {
        return {Unit(text[0]), 1};
    }
}

/// Writes the one or two UTF-16 units of a value of at most U+10FFFF and returns the position after them.
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

/// Writes the one or two wide elements of a value and returns the position after them.
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
