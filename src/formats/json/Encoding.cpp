#include "formats/json/Encoding.h"

#include <algorithm>
#include <cstring>

#include "formats/json/Blocks.h"
#include "text/CodeUnits.h"
#include "text/Utf8Sequence.h"

namespace json {

using text::hasUtf16Elements;
using text::IsHighSurrogate;
using text::IsLowSurrogate;
using text::IsSurrogate;
using text::lastCodePoint;
using text::PutUtf8;
using text::PutWide;
using text::Unit;
using text::Utf8Length;

namespace {

unsigned char Byte(char byte) {
    return static_cast<unsigned char>(byte);
}

// Wide to UTF-8

/// Copies blocks of ASCII; the number of elements copied.
std::size_t NarrowAscii(const wchar_t* from, std::size_t length, char* to) {
    std::size_t done = 0;
    while (length - done >= blockLength) {
        std::uint32_t all = 0;
        for (std::size_t i = 0; i < blockLength; ++i) {
            all |= Unit(from[done + i]);
        }
        if (all >= 0x80) {
            break;
        }
        for (std::size_t i = 0; i < blockLength; ++i) {
            to[done + i] = static_cast<char>(from[done + i]);
        }
        done += blockLength;
    }
    return done;
}

/// The character at `position`, which moves behind it; nothing when there is none.
std::optional<std::uint32_t> TakeCharacter(std::wstring_view text, std::size_t& position) {
    const std::uint32_t unit = Unit(text[position]);
    if (!IsSurrogate(unit)) {
        ++position;
        return unit <= lastCodePoint ? std::optional(unit) : std::nullopt;
    }
    const bool paired = hasUtf16Elements && IsHighSurrogate(unit) && position + 1 < text.size() &&
                        IsLowSurrogate(Unit(text[position + 1]));
    if (!paired) {
        return std::nullopt;
    }
    const std::uint32_t low = Unit(text[position + 1]);
    position += 2;
    return text::JoinSurrogates(unit, low);
}

/// The most bytes that one element of a wide text needs.
constexpr std::size_t longestUnit = hasUtf16Elements ? 3 : 4;

/// Makes room for the rest of a text: as if it were ASCII, and some more to go on when it is not.
char* MakeRoom(std::string& utf8, std::size_t used, std::size_t remaining) {
    const std::size_t needed = used + remaining + blockLength * longestUnit;
    if (utf8.size() < needed) {
        utf8.resize(needed + (used > 0 ? remaining / 2 : 0));
    }
    return utf8.data() + used;
}

} // namespace

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
            const auto character = TakeCharacter(text, position);
            if (!character) {
                badAt = position;
                return false;
            }
            to = PutUtf8(*character, to);
        }
        used += static_cast<std::size_t>(to - begin);
    }
    utf8.resize(used);
    return true;
}

// UTF-8

namespace {

bool IsAsciiBlock(const char* bytes) {
    std::uint64_t words[2];
    std::memcpy(words, bytes, sizeof(words));
    return ((words[0] | words[1]) & 0x8080808080808080U) == 0;
}

/// Overlong forms, surrogates and values beyond U+10FFFF show in the second byte.
bool IsSecondByte(unsigned char first, unsigned char second) {
    const unsigned char lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

/// The length of the valid character at the beginning; 0 when there is none.
std::size_t ValidLength(std::string_view bytes) {
    const std::size_t length = Utf8Length(Byte(bytes[0]));
    if (length > bytes.size() || (length > 1 && !IsSecondByte(Byte(bytes[0]), Byte(bytes[1])))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (!text::IsUtf8Continuation(Byte(bytes[i]))) {
            return 0;
        }
    }
    return length;
}

} // namespace

std::optional<std::size_t> FindInvalidUtf8(std::string_view bytes) {
    std::size_t position = 0;
    while (position < bytes.size()) {
        if (bytes.size() - position >= blockLength && IsAsciiBlock(bytes.data() + position)) {
            position += blockLength;
            continue;
        }
        const std::size_t length = ValidLength(bytes.substr(position));
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

// Lone surrogates

namespace {

constexpr std::size_t escapeLength = 6; // \uD800
constexpr char padding = '\xFF';

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The unit that the escape \uXXXX at `position` stands for; nothing when there is no such escape.
std::optional<std::uint32_t> EscapedUnit(std::string_view json, std::size_t position) {
    if (position + escapeLength > json.size() || json[position] != '\\' || json[position + 1] != 'u') {
        return std::nullopt;
    }
    std::uint32_t unit = 0;
    for (const char digit : json.substr(position + 2, 4)) {
        const int value = HexDigit(digit);
        if (value < 0) {
            return std::nullopt;
        }
        unit = unit << 4 | static_cast<std::uint32_t>(value);
    }
    return unit;
}

/// The first place that looks like the escape of a surrogate, whether or not its backslash is itself escaped.
bool MayHoldSurrogateEscapes(std::string_view json) {
    const auto isCandidate = [json](std::size_t i) {
        return static_cast<unsigned>(json[i] == '\\') & static_cast<unsigned>(json[i + 1] == 'u') &
               static_cast<unsigned>((json[i + 2] | 0x20) == 'd');
    };
    std::size_t position = 0;
    for (; position + blockLength + 2 <= json.size(); position += blockLength) {
        unsigned found = 0;
        for (std::size_t i = 0; i < blockLength; ++i) {
            found |= isCandidate(position + i);
        }
        if (found != 0) {
            return true;
        }
    }
    for (; position + 2 < json.size(); ++position) {
        if (isCandidate(position) != 0) {
            return true;
        }
    }
    return false;
}

/// Looks at the escape at `position` and returns where to go on.
std::size_t MarkEscape(std::string& json, std::size_t position) {
    const auto unit = EscapedUnit(json, position);
    if (!unit || !IsSurrogate(*unit)) {
        return position + 2;
    }
    const auto next = EscapedUnit(json, position + escapeLength);
    if (IsHighSurrogate(*unit) && next && IsLowSurrogate(*next)) {
        return position + 2 * escapeLength;
    }
    char* const end = PutUtf8(*unit, json.data() + position);
    std::fill(end, json.data() + position + escapeLength, padding);
    return position + escapeLength;
}

} // namespace

void MarkLoneSurrogates(std::string& json) {
    if (!MayHoldSurrogateEscapes(json)) {
        return;
    }
    std::size_t position = json.find('\\');
    while (position != std::string::npos) {
        position = json.find('\\', MarkEscape(json, position));
    }
}

// Marked UTF-8 to wide

namespace {

/// Copies blocks of ASCII; the number of bytes copied.
std::size_t WidenAscii(std::string_view from, wchar_t* to) {
    std::size_t done = 0;
    while (from.size() - done >= blockLength && IsAsciiBlock(from.data() + done)) {
        for (std::size_t i = 0; i < blockLength; ++i) {
            to[done + i] = static_cast<wchar_t>(from[done + i]);
        }
        done += blockLength;
    }
    while (done < from.size() && Byte(from[done]) < 0x80) {
        to[done] = static_cast<wchar_t>(from[done]);
        ++done;
    }
    return done;
}

} // namespace

void AppendDecoded(std::string_view marked, std::wstring& text) {
    const std::size_t before = text.size();
    text.resize(before + marked.size());
    wchar_t* to = text.data() + before;
    while (!marked.empty()) {
        const std::size_t ascii = WidenAscii(marked, to);
        marked.remove_prefix(ascii);
        to += ascii;
        while (!marked.empty() && Byte(marked[0]) >= 0x80) {
            const std::size_t length = std::max<std::size_t>(Utf8Length(Byte(marked[0])), 1);
            if (length > 1) {
                to = PutWide(text::Utf8Value(marked.substr(0, length)), to);
            }
            marked.remove_prefix(std::min(length, marked.size()));
        }
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
}

std::wstring Decode(std::string_view marked) {
    std::wstring text;
    AppendDecoded(marked, text);
    return text;
}

bool AppendCodePoint(std::uint32_t codePoint, std::wstring& text) {
    if (hasUtf16Elements && codePoint > lastCodePoint) {
        return false;
    }
    text::AppendWide(text, codePoint);
    return true;
}

} // namespace json
