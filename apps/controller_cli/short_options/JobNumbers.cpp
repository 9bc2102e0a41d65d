#include "controller_cli/short_options/JobNumbers.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>

#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/connection/HostSession.h"

namespace front_end {
namespace {

/// Ids usually have eight hexadecimal digits, which may all be decimal. Only a shorter text is certainly a number; one
/// id in 50,000 looks like such a number.
constexpr std::size_t longestCertainNumber = 5;

bool IsDecimal(const std::wstring& name) {
    return std::all_of(name.begin(), name.end(), [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
}

bool IsCertainNumber(const std::wstring& name) {
    return name.size() <= longestCertainNumber && IsDecimal(name);
}

/// Nothing if the text is not a number, or not a possible job number.
std::optional<std::int32_t> AsNumber(const std::wstring& name) {
    if (name.empty() || !IsDecimal(name)) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const wchar_t digit : name) {
        number = number * 10 + (digit - L'0');
        if (number > std::numeric_limits<std::int32_t>::max()) {
            return std::nullopt;
        }
    }
    return static_cast<std::int32_t>(number);
}

/// Precedence: the number of an existing job, the id of an existing job, the number of a job that does not exist.
std::int32_t NumberOf(const CommandContext& context, const std::vector<ListedJob>& jobs, const std::wstring& name) {
    const std::optional<std::int32_t> number = AsNumber(name);
    const auto hasNumber = [&](const JobListInfo& job) { return job.seqId == number; };
    if (IsCertainNumber(name) || std::any_of(jobs.begin(), jobs.end(), hasNumber)) {
        return number.value_or(0);
    }
    const auto named = std::find_if(jobs.begin(), jobs.end(), [&](const JobListInfo& job) { return job.id == name; });
    if (named != jobs.end()) {
        return named->seqId;
    }
    if (!number) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/NeitherNumberNorId", {name})};
    }
    return *number;
}

} // namespace

std::vector<std::wstring> JobNumbers(CommandContext& context, Start start, const std::vector<std::wstring>& typed) {
    const std::vector<std::wstring> names = WithoutBlanks(typed);
    std::vector<ListedJob> jobs;
    if (!std::all_of(names.begin(), names.end(), IsCertainNumber)) {
        jobs = HostSession(context, start).FetchJobs();
    }
    std::vector<std::wstring> numbers;
    std::transform(names.begin(), names.end(), std::back_inserter(numbers),
                   [&](const std::wstring& name) { return std::to_wstring(NumberOf(context, jobs, name)); });
    return numbers;
}

} // namespace front_end
