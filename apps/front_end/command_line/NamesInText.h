#pragma once

#include <string>
#include <vector>

namespace front_end {

/// Splits a text such as "1, 2" at its commas.
std::vector<std::wstring> NamesInText(const std::wstring& text);

/// The names without surrounding blanks; blank names are omitted.
std::vector<std::wstring> WithoutBlanks(const std::vector<std::wstring>& names);

/// For comparisons: the letters from A to Z in lower case.
std::wstring LowerCase(std::wstring text);

} // namespace front_end
