#pragma once

#include <string>
#include <vector>

namespace controller_cli {

/// The names in a text such as "1, 2", between commas.
std::vector<std::wstring> NamesInText(const std::wstring& text);

/// The names without the blanks around them; those that are blank are left out.
std::vector<std::wstring> WithoutBlanks(const std::vector<std::wstring>& names);

} // namespace controller_cli
