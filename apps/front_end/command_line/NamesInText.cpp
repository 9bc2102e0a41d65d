#include "front_end/command_line/NamesInText.h"

#include <algorithm>
#include <cstddef>

namespace front_end {
namespace {

constexpr wchar_t blanks[] = L" \t";

} // namespace

std::vector<std::wstring> NamesInText(const std::wstring& text) {
    std::vector<std::wstring> names;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find(L',', begin), text.size());
        names.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return WithoutBlanks(names);
}

std::vector<std::wstring> WithoutBlanks(const std::vector<std::wstring>& names) {
    std::vector<std::wstring> trimmed;
    for (const std::wstring& name : names) {
        const std::size_t begin = name.find_first_not_of(blanks);
        if (begin != std::wstring::npos) {
            trimmed.push_back(name.substr(begin, name.find_last_not_of(blanks) + 1 - begin));
        }
    }
    return trimmed;
}

std::wstring LowerCase(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), [](wchar_t letter) {
        return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
    });
    return text;
}

} // namespace front_end
