#include "controller_cli/command_line/ShortOptionUsage.h"

#include <cstddef>
#include <string_view>

#include "controller_cli/command_line/ShortOptionArguments.h"
#include "front_end/commands/Command.h"

namespace front_end {
namespace {

bool IsPlain(const std::wstring& argument) {
    return !argument.empty() && argument.front() != L'-' && argument.front() != L'/';
}

/// True for an empty text and for empty quotes.
bool IsEmptyValue(const std::wstring& value) {
    return value.empty() || value == L"\"\"" || value == L"''";
}

/// One option with its value, attached or in the next argument.
struct LetterOption {
    /// "-o"
    std::wstring name;
    std::wstring value;
    bool hasNextArgument = false;
};

LetterOption OptionAt(const std::vector<std::wstring>& arguments, std::size_t index) {
    LetterOption option{arguments[index].substr(0, 2), arguments[index].substr(2)};
    option.hasNextArgument = option.value.empty() && index + 1 < arguments.size() && IsPlain(arguments[index + 1]);
    if (option.hasNextArgument) {
        option.value = arguments[index + 1];
    }
    return option;
}

void RequireKnown(const std::wstring& argument) {
    if (argument.empty()) {
        throw UsageProblem{L"Usage/EmptyArgument", {}};
    }
    if (argument.size() < 2 || !IsOptionLetter(argument[1])) {
        throw UsageProblem{L"Usage/UnknownArgument", argument};
    }
}

void RequireValue(const LetterOption& option) {
    const wchar_t letter = option.name[1];
    if ((letter == L'f' || letter == L'm') && !option.value.empty()) {
        throw UsageProblem{L"Usage/FlagWithValue", option.name};
    }
    if ((letter == L'i' || letter == L'l' || letter == L'o') && IsEmptyValue(option.value)) {
        throw UsageProblem{L"Usage/ValueMissing", option.name};
    }
}

} // namespace

void RequireShortOptionUsage(const std::vector<std::wstring>& arguments) {
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        if (IsPlain(arguments[index])) {
            continue;
        }
        RequireKnown(arguments[index]);
        const LetterOption option = OptionAt(arguments, index);
        RequireValue(option);
        index += option.hasNextArgument ? 1 : 0;
    }
}

} // namespace front_end
