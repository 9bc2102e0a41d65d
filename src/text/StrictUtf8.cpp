#include "text/StrictUtf8.h"

#include <algorithm>
#include <cstdint>

#include "text/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Utf8.h"

namespace text {
namespace {

[[gnu::noinline]] bool IsAsciiBlock(const wchar_t* block) {
    std::uint32_t all = 0;
    for (std::size_t i = 0; i < blockLength; ++i) {
        all |= Unit(block[i]);
    }
    return all < 0x80;
}

[[gnu::noinline]] void NarrowBlock(const wchar_t* block, char* to) {
    for (std::size_t i = 0; i < blockLength; ++i) {
        to[i] = static_cast<char>(block[i]);
    }
}

/// Copies leading blocks of ASCII; returns the number of elements copied.
std::size_t NarrowAscii(const wchar_t* from, std::size_t length, char* to) {
    std::size_t done = 0;
    while (length - done >= blockLength && IsAsciiBlock(from + done)) {
        NarrowBlock(from + done, to + done);
        done += blockLength;
    }
    return done;
}

/// The maximum number of bytes for one element of a wide text.
constexpr std::size_t longestUnit = hasUtf16Elements ? 3 : 4;

/// Reserves space for the rest of a text: as if it were ASCII, plus a margin for the next characters that are not.
char* MakeRoom(std::string& utf8, std::size_t used, std::size_t remaining) {
    const std::size_t needed = used + RoomForAscii(remaining);
    if (utf8.size() < needed) {
        utf8.resize(needed + (used > 0 ? remaining / 2 : 0));
    }
    return utf8.data() + used;
}

} // namespace

std::size_t RoomForAscii(std::size_t length) {
    return length + blockLength * longestUnit;
}

bool EncodeUtf8(std::wstring_view text, std::string& utf8, std::size_t& badAt) {
    std::size_t used = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        char* const begin = MakeRoom(utf8, used, text.size() - position);
        const std::size_t ascii = NarrowAscii(text.data() + position, text.size() - position, begin);
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
