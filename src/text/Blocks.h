#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace text {

/// Texts are mostly ASCII. ASCII is converted in blocks of this many elements, in loops that compilers vectorise. A
/// function with such a loop is not inlined: inside another loop GCC 12 unrolls it before it can vectorise it.
inline constexpr std::size_t blockLength = 16;

/// True if `blockLength` bytes are all ASCII.
inline bool IsAsciiBlock(const char* bytes) {
    std::uint64_t words[blockLength / sizeof(std::uint64_t)];
    std::memcpy(words, bytes, sizeof(words));
    return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}

} // namespace text
