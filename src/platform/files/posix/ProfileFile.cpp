#include "platform/files/ProfileFile.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace platform {
namespace {

constexpr std::size_t largestFile = std::size_t{1} << 20;
constexpr std::size_t longestValue = 255;
constexpr std::wstring_view blanks = L" \t\v\f\x1A";

std::wstring FromLittleEndianUtf16(std::string_view bytes) {
    std::u16string units;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<unsigned char>(bytes[at + 1]);
        units += static_cast<char16_t>(low | (high << 8));
    }
    return text::FromUtf16(units);
}

std::wstring Decoded(std::string_view bytes) {
    constexpr std::string_view utf16Mark = "\xFF\xFE";
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    if (bytes.substr(0, utf16Mark.size()) == utf16Mark) {
        return FromLittleEndianUtf16(bytes.substr(utf16Mark.size()));
    }
    const bool marked = bytes.substr(0, utf8Mark.size()) == utf8Mark;
    return text::FromUtf8(marked ? bytes.substr(utf8Mark.size()) : bytes);
}

std::wstring_view Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

wchar_t ToLowerAscii(wchar_t character) {
    return character >= L'A' && character <= L'Z' ? character + (L'a' - L'A') : character;
}

bool IsSameName(std::wstring_view left, std::wstring_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return ToLowerAscii(a) == ToLowerAscii(b); });
}

/// Removes the next line from the front of `text` and returns it without surrounding blanks.
std::wstring_view TakeLine(std::wstring_view& text) {
    const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
    const std::wstring_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return Trimmed(line);
}

std::optional<std::wstring_view> SectionName(std::wstring_view line) {
    const std::size_t end = line.find(L']');
    if (line.empty() || line.front() != L'[' || end == std::wstring_view::npos) {
        return std::nullopt;
    }
    return line.substr(1, end - 1);
}

/// The part after "=" if the line has the key `key`.
std::optional<std::wstring_view> ValueOf(std::wstring_view line, std::wstring_view key) {
    const std::size_t equals = line.find(L'=');
    const bool isComment = !line.empty() && line.front() == L';';
    if (isComment || equals == std::wstring_view::npos || !IsSameName(Trimmed(line.substr(0, equals)), key)) {
        return std::nullopt;
    }
    return Trimmed(line.substr(equals + 1));
}

std::wstring_view WithoutQuotes(std::wstring_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == L'"' || value.front() == L'\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// The text behind the line that begins the section; empty if there is none.
std::wstring_view AfterSectionName(std::wstring_view text, std::wstring_view section) {
    while (!text.empty()) {
        const auto name = SectionName(TakeLine(text));
        if (name && IsSameName(*name, section)) {
            break;
        }
    }
    return text;
}

/// The value of the key before the next section.
std::wstring_view FindValue(std::wstring_view text, std::wstring_view key) {
    while (!text.empty()) {
        const std::wstring_view line = TakeLine(text);
        if (SectionName(line)) {
            break;
        }
        if (const auto value = ValueOf(line, key)) {
            return WithoutQuotes(*value);
        }
    }
    return {};
}

/// Truncates to the length that a buffer of 256 UTF-16 units holds.
std::wstring FirstUnits(std::wstring_view value) {
    return text::FromUtf16(text::ToUtf16(value).substr(0, longestValue));
}

} // namespace

std::wstring ReadProfileText(const std::wstring& path, const std::wstring& section, const std::wstring& key) {
    return ReadProfileTexts(path, section, {key}).front();
}

std::vector<std::wstring> ReadProfileTexts(const std::wstring& path, const std::wstring& section,
                                           const std::vector<std::wstring>& keys) {
    std::string bytes;
    if (!ReadFile(path, largestFile, bytes)) {
        return std::vector<std::wstring>(keys.size());
    }
    const std::wstring text = Decoded(bytes);
    const std::wstring_view content = AfterSectionName(text, section);
    std::vector<std::wstring> values;
    values.reserve(keys.size());
    for (const std::wstring& key : keys) {
        values.push_back(FirstUnits(FindValue(content, Trimmed(key))));
    }
    return values;
}

} // namespace platform
