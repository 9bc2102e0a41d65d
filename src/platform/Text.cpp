#include "platform/Text.h"

#include <cstddef>

namespace platform {
namespace {

constexpr char32_t replacementCharacter = 0xFFFD;
constexpr char32_t lastCodePoint = 0x10FFFF;
// A byte B that is not part of valid UTF-8 is carried as U+DC00 + B.
constexpr char32_t escapedByteBase = 0xDC00;

bool IsHighSurrogate(char32_t value) {
    return value >= 0xD800 && value <= 0xDBFF;
}
bool IsLowSurrogate(char32_t value) {
    return value >= 0xDC00 && value <= 0xDFFF;
}
bool IsEscapedByte(char32_t value) {
    return value >= 0xDC80 && value <= 0xDCFF;
}

struct Decoded {
    char32_t value = 0;
    std::size_t length = 0; // 0: not valid
};

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

bool IsShortestForm(char32_t value, std::size_t length) {
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return value >= smallest[length];
}

Decoded DecodeUtf8(std::string_view bytes, std::size_t at) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || length > bytes.size() - at) {
        return {};
    }
    char32_t value = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[at + i]);
        if ((next & 0xC0u) != 0x80u) {
            return {};
        }
        value = (value << 6) | (next & 0x3Fu);
    }
    const bool surrogate = IsHighSurrogate(value) || IsLowSurrogate(value);
    return IsShortestForm(value, length) && value <= lastCodePoint && !surrogate ? Decoded{value, length} : Decoded{};
}

/// One unit of wide text as a number: wchar_t is unsigned on Windows and signed on Linux.
char32_t UnitOf(wchar_t unit) {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return static_cast<char16_t>(unit);
    } else {
        return static_cast<char32_t>(unit);
    }
}

char32_t UnitOf(char16_t unit) {
    return unit;
}

/// The code point at `at`, a surrogate pair taken together; an unpaired surrogate is its own value.
template <typename View>
Decoded DecodeWide(View text, std::size_t at) {
    const char32_t first = UnitOf(text[at]);
    if (IsHighSurrogate(first) && at + 1 < text.size()) {
        const char32_t second = UnitOf(text[at + 1]);
        if (IsLowSurrogate(second)) {
            return {0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00), 2};
        }
    }
    return {first, 1};
}

void AppendUtf16(std::u16string& units, char32_t value) {
    if (value < 0x10000) {
        units += static_cast<char16_t>(value);
        return;
    }
    units += static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10));
    units += static_cast<char16_t>(0xDC00 + (value & 0x3FF));
}

void AppendWide(std::wstring& text, char32_t value) {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        std::u16string units;
        AppendUtf16(units, value);
        text.append(units.begin(), units.end());
    } else {
        text += static_cast<wchar_t>(value);
    }
}

void AppendContinuation(std::string& bytes, char32_t value) {
    bytes += static_cast<char>(0x80 | (value & 0x3F));
}

void AppendUtf8(std::string& bytes, char32_t value) {
    if (value < 0x80) {
        bytes += static_cast<char>(value);
    } else if (value < 0x800) {
        bytes += static_cast<char>(0xC0 | (value >> 6));
        AppendContinuation(bytes, value);
    } else if (value < 0x10000) {
        bytes += static_cast<char>(0xE0 | (value >> 12));
        AppendContinuation(bytes, value >> 6);
        AppendContinuation(bytes, value);
    } else {
        bytes += static_cast<char>(0xF0 | (value >> 18));
        AppendContinuation(bytes, value >> 12);
        AppendContinuation(bytes, value >> 6);
        AppendContinuation(bytes, value);
    }
}

void AppendEncoded(std::string& bytes, char32_t value) {
    if (IsEscapedByte(value)) {
        bytes += static_cast<char>(value - escapedByteBase);
        return;
    }
    const bool encodable = value <= lastCodePoint && !IsHighSurrogate(value) && !IsLowSurrogate(value);
    AppendUtf8(bytes, encodable ? value : replacementCharacter);
}

} // namespace

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Decoded decoded = DecodeUtf8(bytes, at);
        const bool valid = decoded.length != 0;
        AppendWide(text, valid ? decoded.value : escapedByteBase + static_cast<unsigned char>(bytes[at]));
        at += valid ? decoded.length : 1;
    }
    return text;
}

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Decoded decoded = DecodeWide(text, at);
        AppendEncoded(bytes, decoded.value);
        at += decoded.length;
    }
    return bytes;
}

std::optional<std::wstring> FromStrictUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Decoded decoded = DecodeUtf8(bytes, at);
        if (decoded.length == 0) {
            return std::nullopt;
        }
        AppendWide(text, decoded.value);
        at += decoded.length;
    }
    return text;
}

std::u16string ToUtf16(std::wstring_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t unit : text) {
        const char32_t value = UnitOf(unit);
        AppendUtf16(units, value <= lastCodePoint ? value : replacementCharacter);
    }
    return units;
}

std::wstring FromUtf16(std::u16string_view units) {
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const Decoded decoded = DecodeWide(units, at);
        AppendWide(text, decoded.value);
        at += decoded.length;
    }
    return text;
}

} // namespace platform
