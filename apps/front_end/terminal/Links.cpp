#include "front_end/terminal/Links.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "text/Numbers.h"
#include "text/Text.h"

namespace front_end {
namespace {

bool IsUnreserved(char letter) {
    constexpr std::string_view others = "-._~/:";
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           others.find(letter) != std::string_view::npos;
}

/// "file:///home/ann/a%20b"; "file:///C:/a" on Windows.
std::string AddressOf(const std::wstring& nativePath) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::wstring path = nativePath;
    std::replace(path.begin(), path.end(), L'\\', L'/');
    std::string address = path.starts_with(L"/") ? "file://" : "file:///";
    for (const char letter : text::ToUtf8(path)) {
        if (IsUnreserved(letter)) {
            address += letter;
        } else {
            const auto byte = static_cast<unsigned char>(letter);
            address += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return address;
}

} // namespace

bool ShowsLinks(const std::function<std::optional<std::wstring>(const std::wstring&)>& variable) {
    constexpr std::array programs = {L"iTerm.app", L"WezTerm", L"vscode", L"Hyper", L"ghostty", L"Tabby"};
    constexpr std::array terminals = {L"xterm-kitty", L"foot", L"alacritty", L"xterm-ghostty"};
    const std::wstring program = variable(L"TERM_PROGRAM").value_or(L"");
    const std::wstring terminal = variable(L"TERM").value_or(L"");
    constexpr std::int32_t firstVte = 5000;
    return std::find(programs.begin(), programs.end(), program) != programs.end() ||
           std::find(terminals.begin(), terminals.end(), terminal) != terminals.end() ||
           numbers::ReadInteger(variable(L"VTE_VERSION").value_or(L"")) >= firstVte ||
           variable(L"WT_SESSION").has_value() || variable(L"KONSOLE_VERSION").has_value();
}

std::wstring LinkTo(const std::wstring& nativePath, const std::wstring& shown) {
    return L"\x1b]8;;" + text::FromUtf8(AddressOf(nativePath)) + L"\x1b\\" + shown + L"\x1b]8;;\x1b\\";
}

} // namespace front_end
