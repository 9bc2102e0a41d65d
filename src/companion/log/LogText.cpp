#include "companion/log/LogText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/CodeUnits.h"
#include "platform/Text.h"

namespace log_file {
namespace {

/// True for what would end the line for some reader, or steer the terminal that shows it.
bool IsControl(std::uint32_t unit) {
    return unit < 0x20 || (unit >= 0x7f && unit <= 0x9f) || unit == 0x2028 || unit == 0x2029;
}

bool NeedsLook(wchar_t character) {
    const std::uint32_t unit = platform::Unit(character);
    return IsControl(unit) || platform::IsSurrogate(unit);
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
    return platform::hasUtf16Elements && index + 1 < message.size() &&
           platform::IsHighSurrogate(platform::Unit(message[index])) &&
           platform::IsLowSurrogate(platform::Unit(message[index + 1]));
}

std::wstring Escaped(const std::wstring& message) {
    std::wstring text;
    text.reserve(message.size() + 16);
    for (std::size_t index = 0; index < message.size(); ++index) {
        if (IsPairAt(message, index)) {
            text.append(message, index++, 2);
        } else if (NeedsLook(message[index])) {
            AppendEscaped(platform::Unit(message[index]), text);
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
