#include "CommonControllerLib/CLIArgumentParser.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

/// Used as the option letter of a plain argument.
constexpr wchar_t plainArgument = 0;

bool IsQuotedBy(wchar_t quote, const std::wstring& text) {
    return text.size() >= 2 && text.front() == quote && text.back() == quote;
}

} // namespace

bool CLIArgumentParser::Parse(const std::vector<std::wstring>& args) {
    if (args.empty()) {
        return false;
    }
    for (std::size_t index = 0; index < args.size(); ++index) {
        wchar_t letter = plainArgument;
        std::wstring value;
        if (!ParseOption(args[index], letter, value)) {
            continue;
        }
        const bool hasNext = index + 1 < args.size();
        if (value.empty() && hasNext && TakePlainArgument(args[index + 1], value)) {
            ++index;
        }
        if (!Apply(letter, value)) {
            return false;
        }
    }
    return commandType != None;
}

/// Takes the next argument as the value of an option, unless it is an option itself.
bool CLIArgumentParser::TakePlainArgument(const std::wstring& arg, std::wstring& value) const {
    wchar_t letter = plainArgument;
    std::wstring plainValue;
    if (!ParseOption(arg, letter, plainValue) || letter != plainArgument) {
        return false;
    }
    value = plainValue;
    return true;
}

/// Returns false for a second command.
bool CLIArgumentParser::Apply(wchar_t letter, const std::wstring& value) {
    switch (letter) {
    case L'l':
        logFileName = StripQuotation(value);
        return true;
    case L'o':
        outputFileName = StripQuotation(value);
        return true;
    case L'f':
        forceClientMode = true;
        return true;
    case L'm':
        forceServerMode = true;
        return true;
    default:
        return ApplyCommand(letter, value);
    }
}

bool CLIArgumentParser::ApplyCommand(wchar_t letter, const std::wstring& value) {
    if (commandType != None) {
        return false;
    }
    if (letter == L'c' || letter == L's') {
        commandType = letter == L'c' ? CancelJobs : CheckJobStatus;
        ids = ParseIds(value);
    } else {
        commandType = EnqueueJobs;
        jobFileName = StripQuotation(value);
    }
    return true;
}

CLIArgumentParser::CommandType CLIArgumentParser::GetCommandType() {
    return commandType;
}

std::wstring CLIArgumentParser::GetJobFileName() const {
    return commandType == EnqueueJobs ? jobFileName : std::wstring();
}

std::vector<std::wstring> CLIArgumentParser::GetIds() const {
    const bool takesIds = commandType == CancelJobs || commandType == CheckJobStatus;
    return takesIds ? ids : std::vector<std::wstring>();
}

std::wstring CLIArgumentParser::GetLogFileName() const {
    return logFileName;
}

std::wstring CLIArgumentParser::GetOutputFileName() const {
    return outputFileName;
}

bool CLIArgumentParser::IsForceClientMode() const {
    return forceClientMode;
}

bool CLIArgumentParser::IsForceServerMode() const {
    return forceServerMode;
}

bool CLIArgumentParser::ParseOption(const std::wstring& arg, wchar_t& letter, std::wstring& value) const {
    constexpr std::wstring_view optionLetters = L"cfilmos";
    letter = plainArgument;
    value.clear();
    if (arg.empty()) {
        return false;
    }
    if (arg.front() != L'-' && arg.front() != L'/') {
        value = arg;
        return true;
    }
    if (arg.size() < 2 || optionLetters.find(arg[1]) == std::wstring_view::npos) {
        return false;
    }
    letter = arg[1];
    value = arg.substr(2);
    return true;
}

std::vector<std::wstring> CLIArgumentParser::ParseIds(const std::wstring& text) const {
    std::vector<std::wstring> pieces;
    auto begin = text.begin();
    while (begin != text.end()) {
        const auto end = std::find(begin, text.end(), L',');
        if (begin != end) {
            pieces.emplace_back(begin, end);
        }
        begin = end == text.end() ? end : end + 1;
    }
    return pieces;
}

std::wstring CLIArgumentParser::StripQuotation(const std::wstring& text) const {
    const bool isQuoted = IsQuotedBy(L'"', text) || IsQuotedBy(L'\'', text);
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}
