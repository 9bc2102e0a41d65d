#include "front_end/command_line/Utf8Arguments.h"

#include <algorithm>
#include <iterator>

#include "text/Text.h"

namespace front_end {

std::vector<std::wstring> WideTexts(const std::vector<std::string>& texts) {
    std::vector<std::wstring> wide;
    std::transform(texts.begin(), texts.end(), std::back_inserter(wide), text::FromUtf8);
    return wide;
}

std::vector<std::string> ReversedUtf8(const std::vector<std::wstring>& arguments) {
    std::vector<std::string> reversed;
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed), text::ToUtf8);
    return reversed;
}

} // namespace front_end
