#include "controller_cli/LetterArguments.h"

#include <string_view>

namespace controller_cli {
namespace {

constexpr std::wstring_view optionLetters = L"cfilmos";

bool BeginsWithSlash(const std::wstring& argument) {
    return argument.starts_with(L"/");
}

/// "-i", "-l", "-o": their value is a path, in the next argument.
bool TakesPathBehind(const std::wstring& argument) {
    return argument == L"-i" || argument == L"-l" || argument == L"-o";
}

bool IsPath(const std::wstring& argument) {
    const bool looksLikeOption = argument.size() > 1 && optionLetters.find(argument[1]) != std::wstring_view::npos;
    return BeginsWithSlash(argument) && (!looksLikeOption || argument.find_first_of(L"./", 1) != std::wstring::npos);
}

} // namespace

std::vector<std::wstring> PrepareLetterArguments(const std::vector<std::wstring>& arguments, bool slashBeginsPaths) {
    if (!slashBeginsPaths) {
        return arguments;
    }
    std::vector<std::wstring> prepared;
    for (const std::wstring& argument : arguments) {
        const bool isValue = !prepared.empty() && TakesPathBehind(prepared.back());
        if (isValue && BeginsWithSlash(argument)) {
            prepared.back() += argument;
        } else if (IsPath(argument)) {
            prepared.push_back(L"\"" + argument + L"\"");
        } else {
            prepared.push_back(argument);
        }
    }
    return prepared;
}

} // namespace controller_cli
