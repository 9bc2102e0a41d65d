#include "companion/json/Encoding.h"

#include <algorithm>
#include <cstring>

#include "companion/json/Surrogates.h"

namespace json {

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
        return unit <= highestCharacter ? std::optional(unit) : std::nullopt;
    }
    const bool paired = hasUtf16Elements && IsHighSurrogate(unit) && position + 1 < text.size() &&
                        IsLowSurrogate(Unit(text[position + 1]));
    if (!paired) {
        return std::nullopt;
    }
    const std::uint32_t low = Unit(text[position + 1]);
    position += 2;
    return 0x10000 + ((unit - surrogateBegin) << 10) + (low - lowSurrogateBegin);
}

/// Writes one character and returns the end of its bytes.
char* PutCharacter(std::uint32_t character, char* to) {
    const auto put = [&to](std::uint32_t byte) { *to++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character < 0x80) {
        put(character);
        return to;
    }
    if (character < 0x800) {
        put(0xC0 | character >> 6);
    } else {
        if (character < 0x10000) {
            put(0xE0 | character >> 12);
        } else {
            put(0xF0 | character >> 18);
            put(0x80 | (character >> 12 & 0x3F));
        }
        put(0x80 | (character >> 6 & 0x3F));
    }
    put(0x80 | (character & 0x3F));
    return to;
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
            to = PutCharacter(*character, to);
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

/// The length that a first byte announces; 0 for one that begins no character.
std::size_t SequenceLength(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// Overlong forms, surrogates and values beyond U+10FFFF show in the second byte.
bool IsSecondByte(unsigned char first, unsigned char second) {
    const unsigned char lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

/// The length of the valid character at the beginning; 0 when there is none.
std::size_t ValidLength(std::string_view bytes) {
    const std::size_t length = SequenceLength(Byte(bytes[0]));
    if (length > bytes.size() || (length > 1 && !IsSecondByte(Byte(bytes[0]), Byte(bytes[1])))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (!IsContinuation(Byte(bytes[i]))) {
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
    char* const end = PutCharacter(*unit, json.data() + position);
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

wchar_t* PutWide(std::uint32_t character, wchar_t* to) {
    if (hasUtf16Elements && character >= 0x10000) {
        *to++ = static_cast<wchar_t>(surrogateBegin + ((character - 0x10000) >> 10));
        *to++ = static_cast<wchar_t>(lowSurrogateBegin + ((character - 0x10000) & 0x3FF));
    } else {
        *to++ = static_cast<wchar_t>(character);
    }
    return to;
}

/// The character of a sequence of more than one byte.
std::uint32_t DecodeSequence(std::string_view bytes) {
    std::uint32_t character = Byte(bytes[0]) & (0xFFU >> (bytes.size() + 1));
    for (const char byte : bytes.substr(1)) {
        character = character << 6 | (Byte(byte) & 0x3FU);
    }
    return character;
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
            const std::size_t length = std::max<std::size_t>(SequenceLength(Byte(marked[0])), 1);
            if (length > 1) {
                to = PutWide(DecodeSequence(marked.substr(0, length)), to);
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
    if (hasUtf16Elements && codePoint > highestCharacter) {
        return false;
    }
    wchar_t elements[2];
    text.append(elements, PutWide(codePoint, elements));
    return true;
}

} // namespace json
