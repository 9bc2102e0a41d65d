#include "scenario_runner/LogTail.h"

#include <algorithm>
#include <string_view>

#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace scenario_runner {
namespace {

constexpr std::size_t mostLines = 10;
constexpr std::size_t mostBytes = 2000;

} // namespace

std::wstring ReadLogTail(const std::wstring& logPath) {
    std::string text;
    // A missing log yields no lines.
    (void)platform::ReadFileEnd(logPath, 2 * mostBytes, text);
    return LastLines(text);
}

std::wstring LastLines(const std::string& text) {
    std::string_view lines = std::string_view(text).substr(0, text.find_last_not_of("\r\n\t ") + 1);
    lines.remove_prefix(lines.size() - std::min(lines.size(), mostBytes));
    std::size_t lineBreak = lines.size();
    for (std::size_t count = 0; count < mostLines && lineBreak != 0 && lineBreak != std::string::npos; ++count) {
        lineBreak = lines.rfind('\n', lineBreak - 1);
    }
    lines.remove_prefix(lineBreak == std::string::npos || lines.empty() ? 0 : lineBreak + 1);
    return text::FromUtf8(lines.substr(std::min(lines.find_first_not_of("\r\n"), lines.size())));
}

} // namespace scenario_runner
