#include "local_socket/TextEncoding.h"

#include <array>
#include <cstdint>
#include <type_traits>

namespace local_socket {
namespace {

constexpr char32_t lastCharacter = 0x10FFFF;
constexpr char32_t replacement = 0xFFFD;
constexpr bool wideIsUtf16 = sizeof(wchar_t) == 2;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

char32_t UnitAt(std::wstring_view text, std::size_t index) {
    return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(text[index]));
}

/// Reads one character, or one surrogate without a partner.
char32_t TakeCharacter(std::wstring_view text, std::size_t& index) {
    const char32_t unit = UnitAt(text, index++);
    if (wideIsUtf16 && IsHighSurrogate(unit) && index < text.size() && IsLowSurrogate(UnitAt(text, index))) {
        return 0x10000 + ((unit - 0xD800) << 10) + (UnitAt(text, index++) - 0xDC00);
    }
    return unit > lastCharacter ? replacement : unit;
}

void AppendWide(std::wstring& text, char32_t character) {
    if (wideIsUtf16 && character > 0xFFFF) {
        text.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)));
        text.push_back(static_cast<wchar_t>(0xDC00 + (character & 0x3FF)));
    } else {
        text.push_back(static_cast<wchar_t>(character));
    }
}

/// The forms of one character: how its first byte looks, and the smallest character that may take so many bytes.
struct Form {
    std::size_t bytes;
    std::uint8_t leadMask;
    std::uint8_t lead;
    char32_t smallest;
};
constexpr std::array<Form, 4> forms{
    {{1, 0x80, 0x00, 0}, {2, 0xE0, 0xC0, 0x80}, {3, 0xF0, 0xE0, 0x800}, {4, 0xF8, 0xF0, 0x10000}}};

const Form& FormOf(char32_t character) {
    std::size_t index = forms.size() - 1;
    while (character < forms[index].smallest) {
        --index;
    }
    return forms[index];
}

void AppendCharacter(std::string& bytes, char32_t character) {
    if (character < 0x80) {
        bytes.push_back(static_cast<char>(character));
        return;
    }
    const Form& form = FormOf(character);
    std::size_t shift = 6 * (form.bytes - 1);
    bytes.push_back(static_cast<char>(form.lead | (character >> shift)));
    while (shift > 0) {
        shift -= 6;
        bytes.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    }
}

std::uint8_t ByteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

const Form* FormWithLead(std::uint8_t lead) {
    for (const Form& form : forms) {
        if ((lead & form.leadMask) == form.lead) {
            return &form;
        }
    }
    return nullptr;
}

std::optional<char32_t> TakeEncoded(std::string_view bytes, std::size_t& index) {
    const std::uint8_t lead = ByteAt(bytes, index);
    if (lead < 0x80) {
        ++index;
        return lead;
    }
    const Form* const form = FormWithLead(lead);
    if (form == nullptr || bytes.size() - index < form->bytes) {
        return std::nullopt;
    }
    char32_t character = lead & static_cast<std::uint8_t>(~form->leadMask);
    for (std::size_t next = 1; next < form->bytes; ++next) {
        const std::uint8_t byte = ByteAt(bytes, index + next);
        if ((byte & 0xC0) != 0x80) {
            return std::nullopt;
        }
        character = (character << 6) | (byte & 0x3Fu);
    }
    if (character < form->smallest || character > lastCharacter) {
        return std::nullopt;
    }
    index += form->bytes;
    return character;
}

} // namespace

void AppendEncoded(std::string& bytes, std::wstring_view text) {
    bytes.reserve(bytes.size() + text.size());
    for (std::size_t index = 0; index < text.size();) {
        AppendCharacter(bytes, TakeCharacter(text, index));
    }
}

std::optional<std::wstring> DecodeText(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t index = 0; index < bytes.size();) {
        const std::optional<char32_t> character = TakeEncoded(bytes, index);
        if (!character) {
            return std::nullopt;
        }
        AppendWide(text, *character);
    }
    return text;
}

} // namespace local_socket
