#include "front_end/commands/SchedulingOptions.h"

#include <charconv>

#include "text/Text.h"
#include "text/Time.h"

namespace front_end {
namespace {

std::optional<std::int64_t> WholeNumber(const std::wstring& text) {
    const std::string digits = text::ToUtf8(text);
    std::int64_t number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isNumber = result.ec == std::errc() && result.ptr == digits.data() + digits.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<std::int32_t> PriorityOf(const Command& command) {
    return WholeNumberOf(command.priority, -1000, 1000, L"Usage/Priority");
}

std::optional<std::int64_t> NotBeforeOf(const CommandContext& context, const Command& command) {
    if (command.notBefore.empty()) {
        return std::nullopt;
    }
    if (const auto duration = text::ReadDuration(command.notBefore)) {
        return context.now() + *duration;
    }
    const auto time = text::ReadUtcTime(command.notBefore);
    if (!time) {
        throw UsageProblem{L"Usage/NotBefore", command.notBefore};
    }
    return time;
}

std::optional<std::map<std::wstring, std::int64_t>> NeedsOf(const Command& command) {
    if (command.needs.empty()) {
        return std::nullopt;
    }
    std::map<std::wstring, std::int64_t> needs;
    for (const std::wstring& need : command.needs) {
        const std::size_t sign = need.find(L'=');
        const auto amount = sign == std::wstring::npos ? std::nullopt : WholeNumber(need.substr(sign + 1));
        if (!amount || *amount < 1 || sign == 0 || !needs.emplace(need.substr(0, sign), *amount).second) {
            throw UsageProblem{L"Usage/Need", need};
        }
    }
    return needs;
}

std::optional<bool> FlagOf(bool isGiven) {
    return isGiven ? std::optional(true) : std::nullopt;
}

RunRules RunRulesOf(const Command& command) {
    constexpr std::int32_t mostMiB = 1 << 30;
    return {WholeNumberOf(command.retries, 0, 100, L"Usage/Retries"),
            DurationOf(command.retryDelay),
            FlagOf(command.retriesWithBackoff),
            FlagOf(command.retriesOnlyAfterCrash),
            DurationOf(command.timeLimit),
            DurationOf(command.silenceLimit),
            WholeNumberOf(command.memoryLimit, 0, mostMiB, L"Usage/MemoryLimit"),
            WholeNumberOf(command.cpuLimit, 0, 100000, L"Usage/CpuLimit")};
}

} // namespace

std::optional<std::int32_t> WholeNumberOf(const std::wstring& text, std::int64_t least, std::int64_t most,
                                          const wchar_t* problem) {
    if (text.empty()) {
        return std::nullopt;
    }
    const auto number = WholeNumber(text);
    if (!number || *number < least || *number > most) {
        throw UsageProblem{problem, text};
    }
    return static_cast<std::int32_t>(*number);
}

std::optional<std::int64_t> DurationOf(const std::wstring& text) {
    const auto duration = text.empty() ? std::nullopt : text::ReadDuration(text);
    if (!text.empty() && !duration) {
        throw UsageProblem{L"Usage/Duration", text};
    }
    return duration;
}

JobsEdit EditOf(const CommandContext& context, const Command& command) {
    return {{}, PriorityOf(command), std::nullopt, NotBeforeOf(context, command), NeedsOf(command)};
}

Scheduling SchedulingOf(const CommandContext& context, const Command& command) {
    const JobsEdit edit = EditOf(context, command);
    return {RunRulesOf(command),
            edit.priority.value_or(0),
            command.isOnHold,
            command.after,
            command.afterEnd,
            command.skipsIfAfterFails,
            edit.notBefore.value_or(0),
            edit.needs.value_or(std::map<std::wstring, std::int64_t>()),
            command.reuse};
}

} // namespace front_end
