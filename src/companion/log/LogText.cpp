#include "companion/log/LogText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/Text.h"

namespace log_file {
namespace {

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xd800 && unit <= 0xdbff;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xdc00 && unit <= 0xdfff;
}

/// True for what would end the line for some reader, or steer the terminal that shows it.
bool IsControl(std::uint32_t unit) {
    return unit < 0x20 || (unit >= 0x7f && unit <= 0x9f) || unit == 0x2028 || unit == 0x2029;
}

bool NeedsLook(wchar_t character) {
    const auto unit = static_cast<std::uint32_t>(character);
    return IsControl(unit) || IsHighSurrogate(unit) || IsLowSurrogate(unit);
}

void AppendEscaped(std::uint32_t unit, std::wstring& text) {
    if (unit == L'\n') {
        text += L"\\n";
    } else if (unit == L'\r') {
        text += L"\\r";
    } else if (unit == L'\t') {
        text += L"\\t";
    } else {
        text += L"\\u";
        for (int shift = 12; shift >= 0; shift -= 4) {
            text += L"0123456789abcdef"[(unit >> shift) & 0xf];
        }
    }
}

/// Only where a unit has 16 bits do two surrogates make one character.
bool IsPairAt(const std::wstring& message, std::size_t index) {
    return sizeof(wchar_t) == 2 && index + 1 < message.size() && IsHighSurrogate(message[index]) &&
           IsLowSurrogate(message[index + 1]);
}

std::wstring Escaped(const std::wstring& message) {
    std::wstring text;
    text.reserve(message.size() + 16);
    for (std::size_t index = 0; index < message.size(); ++index) {
        if (IsPairAt(message, index)) {
            text.append(message, index++, 2);
        } else if (NeedsLook(message[index])) {
            AppendEscaped(static_cast<std::uint32_t>(message[index]), text);
        } else {
            text += message[index];
        }
    }
    return text;
}

} // namespace

std::string LogText(const std::wstring& message) {
    const bool plain = std::none_of(message.begin(), message.end(), NeedsLook);
    return platform::ToUtf8(plain ? message : Escaped(message));
}

} // namespace log_file
