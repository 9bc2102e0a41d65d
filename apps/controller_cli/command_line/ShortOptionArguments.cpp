#include "controller_cli/command_line/ShortOptionArguments.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace front_end {
namespace {

bool BeginsWithSlash(const std::wstring& argument) {
    return argument.starts_with(L"/");
}

/// "-i", "-l" and "-o" take a path, which is the next argument.
bool TakesPathBehind(const std::wstring& argument) {
    return argument == L"-i" || argument == L"-l" || argument == L"-o";
}

bool IsPath(const std::wstring& argument) {
    const bool looksLikeOption = argument.size() > 1 && IsOptionLetter(argument[1]);
    return BeginsWithSlash(argument) && (!looksLikeOption || argument.find_first_of(L"./", 1) != std::wstring::npos);
}

std::wstring Quoted(const std::wstring& argument) {
    return L"\"" + argument + L"\"";
}

void AppendPrepared(const std::wstring& argument, bool slashBeginsPaths, std::vector<std::wstring>& prepared) {
    const bool isValue = !prepared.empty() && TakesPathBehind(prepared.back());
    if (!slashBeginsPaths) {
        prepared.push_back(argument);
    } else if (isValue && BeginsWithSlash(argument)) {
        prepared.back() += argument;
    } else {
        prepared.push_back(IsPath(argument) ? Quoted(argument) : argument);
    }
}

} // namespace

bool IsOptionLetter(wchar_t letter) {
    constexpr std::wstring_view optionLetters = L"cfilmos";
    return optionLetters.find(letter) != std::wstring_view::npos;
}

std::vector<std::wstring> PrepareShortOptionArguments(const std::vector<std::wstring>& arguments,
                                                      bool slashBeginsPaths) {
    const auto endOfOptions = std::find(arguments.begin(), arguments.end(), L"--");
    std::vector<std::wstring> prepared;
    // Placed first, where no option takes them as its value.
    if (endOfOptions != arguments.end()) {
        std::transform(std::next(endOfOptions), arguments.end(), std::back_inserter(prepared), Quoted);
    }
    for (auto argument = arguments.begin(); argument != endOfOptions; ++argument) {
        AppendPrepared(*argument, slashBeginsPaths, prepared);
    }
    return prepared;
}

} // namespace front_end
