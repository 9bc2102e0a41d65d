#include "text/StrictUtf8.h"

#include <algorithm>
#include <cstdint>

#include "text/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Utf8.h"

namespace text {
namespace {

/// Copies a block of any elements, of which `to` is only valid if all are ASCII; returns true if they are.
/// `__restrict`: a `char*` may refer to any object, and compilers vectorise no loop whose output may be its input.
template <std::size_t length>
[[gnu::noinline]] bool NarrowBlock(const wchar_t* __restrict block, char* __restrict to) {
    std::uint32_t all = 0;
    for (std::size_t i = 0; i < length; ++i) {
        all |= Unit(block[i]);
        to[i] = static_cast<char>(block[i]);
    }
    return all < 0x80;
}

/// Copies leading blocks of ASCII; returns the number of elements copied.
template <std::size_t length>
std::size_t NarrowBlocks(std::wstring_view from, char* to) {
    std::size_t done = 0;
    while (from.size() - done >= length && NarrowBlock<length>(from.data() + done, to + done)) {
        done += length;
    }
    return done;
}

/// Copies leading ASCII, but for less than a block.
std::size_t NarrowAscii(std::wstring_view from, char* to) {
    constexpr std::size_t longBlock = 4 * blockLength;
    const std::size_t done = NarrowBlocks<longBlock>(from, to);
    return done + NarrowBlocks<blockLength>(from.substr(done), to + done);
}

/// The maximum number of bytes for one element of a wide text.
constexpr std::size_t longestUnit = hasUtf16Elements ? 3 : 4;

/// Returns the place for the next elements: as if they were ASCII, plus a margin for the next characters that are not.
char* MakeRoom(std::string& utf8, std::size_t used, std::size_t length) {
    utf8.resize(std::max(utf8.size(), used + RoomForAscii(length)));
    return utf8.data() + used;
}

} // namespace

std::size_t RoomForAscii(std::size_t length) {
    return length + blockLength * longestUnit;
}

bool EncodeUtf8(std::wstring_view text, std::string& utf8, std::size_t& badAt) {
    // The output grows in pieces that stay in the cache of the processor: a new piece is filled with zeros.
    constexpr std::size_t longestPiece = 1024 * blockLength;
    std::size_t used = 0;
    std::size_t position = 0;
    utf8.reserve(RoomForAscii(text.size()));
    while (position < text.size()) {
        const std::wstring_view piece = text.substr(position, longestPiece);
        char* const begin = MakeRoom(utf8, used, piece.size());
        const std::size_t ascii = NarrowAscii(piece, begin);
        position += ascii;
        char* to = begin + ascii;
        const std::size_t stop = std::min(position + blockLength, text.size());
        while (position < stop) {
            const CodePoint character = TakeWide(text.substr(position));
            if (!IsCharacter(character.value)) {
                badAt = position;
                return false;
            }
            to = PutUtf8(character.value, to);
            position += character.length;
        }
        used += static_cast<std::size_t>(to - begin);
    }
    utf8.resize(used);
    return true;
}

std::optional<std::size_t> FindInvalidUtf8(std::string_view bytes) {
    std::size_t position = 0;
    while (position < bytes.size()) {
        if (bytes.size() - position >= blockLength && IsAsciiBlock(bytes.data() + position)) {
            position += blockLength;
            continue;
        }
        const std::size_t length = SequenceLength<Surrogates::Refused>(bytes.substr(position));
        if (length == 0) {
            return position;
        }
        position += length;
    }
    return std::nullopt;
}

std::size_t ByteOrderMarkLength(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    return bytes.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
}

} // namespace text
