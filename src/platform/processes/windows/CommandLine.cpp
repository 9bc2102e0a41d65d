#include "platform/processes/windows/CommandLine.h"

namespace platform {
namespace {

/// Backslashes are literal unless they precede a quote (including the closing one); there each must be doubled.
std::wstring Quote(const std::wstring& argument) {
    if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) {
        return argument;
    }
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

} // namespace

std::wstring BuildCommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments) {
    // The program name is parsed by simpler rules, and no file name contains a quote.
    std::wstring line = L'"' + program + L'"';
    for (const std::wstring& argument : arguments) {
        line += L' ' + Quote(argument);
    }
    return line;
}

} // namespace platform
