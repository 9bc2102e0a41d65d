#include "formats/LogTail.h"

#include <algorithm>
#include <string_view>

#include "formats/Boundary.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

namespace run_protocol {
namespace {

constexpr std::size_t mostLines = 10;
constexpr std::size_t mostBytes = 2000;

std::wstring TakeLastLines(std::string_view text) {
    std::string_view lines = text.substr(0, text.find_last_not_of("\r\n\t ") + 1);
    lines.remove_prefix(lines.size() - std::min(lines.size(), mostBytes));
    std::size_t lineBreak = lines.size();
    for (std::size_t count = 0; count < mostLines && lineBreak != 0 && lineBreak != std::string::npos; ++count) {
        lineBreak = lines.rfind('\n', lineBreak - 1);
    }
    lines.remove_prefix(lineBreak == std::string::npos || lines.empty() ? 0 : lineBreak + 1);
    return text::FromUtf8(lines.substr(std::min(lines.find_first_not_of("\r\n"), lines.size())));
}

} // namespace

std::wstring ReadLogTail(const std::wstring& logPath) {
    return boundary::Guard("ReadLogTail", [&] {
        std::string text;
        // A missing log yields no lines.
        (void)platform::ReadFileEnd(logPath, 2 * mostBytes, text);
        return TakeLastLines(text);
    });
}

std::wstring LastLines(const std::string& text) {
    return boundary::Guard("LastLines", [&] { return TakeLastLines(text); });
}

} // namespace run_protocol
