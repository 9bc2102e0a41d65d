#pragma once

#include <cstddef>
#include <cstdint>

/// The units that wide texts are made of.
namespace json {

inline constexpr std::uint32_t surrogateBegin = 0xD800;
inline constexpr std::uint32_t lowSurrogateBegin = 0xDC00;
inline constexpr std::uint32_t surrogateEnd = 0xE000;
inline constexpr std::uint32_t highestCharacter = 0x10FFFF;

/// Elements of a wide text are UTF-16 code units; otherwise whole characters.
inline constexpr bool hasUtf16Elements = sizeof(wchar_t) == sizeof(std::uint16_t);

/// Texts are mostly ASCII: they go through in blocks of this many elements, in loops that compilers vectorise.
inline constexpr std::size_t blockLength = 16;

inline std::uint32_t Unit(wchar_t element) {
    if constexpr (hasUtf16Elements) {
        return static_cast<std::uint16_t>(element);
    } else {
        return static_cast<std::uint32_t>(element);
    }
}

inline bool IsSurrogate(std::uint32_t unit) {
    return unit >= surrogateBegin && unit < surrogateEnd;
}
inline bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= surrogateBegin && unit < lowSurrogateBegin;
}
inline bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= lowSurrogateBegin && unit < surrogateEnd;
}

} // namespace json
