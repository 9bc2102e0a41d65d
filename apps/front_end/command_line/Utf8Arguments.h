#pragma once

#include <string>
#include <vector>

/// The arguments of a command line, to and from the library that parses them, which works on UTF-8.
namespace front_end {

std::vector<std::wstring> WideTexts(const std::vector<std::string>& texts);

/// In reverse order, which the library expects.
std::vector<std::string> ReversedUtf8(const std::vector<std::wstring>& arguments);

} // namespace front_end
