#include "front_end/commands/JobSelection.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>

#include "front_end/commands/CommandFailure.h"
#include "front_end/commands/JobFilter.h"
#include "text/Numbers.h"

namespace front_end {
namespace {

[[noreturn]] void FailNoSuchJob(const CommandContext& context, const std::wstring& name) {
    throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/NoSuchJob", {name})};
}

using JobsByName = std::map<std::wstring, const ListedJob*>;

/// The first job with each name as number (decimal text) or id; null if there is none. The jobs must outlive the map.
JobsByName FindJobs(const std::vector<ListedJob>& jobs, const std::vector<std::wstring>& names) {
    JobsByName found;
    for (const std::wstring& name : names) {
        found.emplace(name, nullptr);
    }
    for (const ListedJob& job : jobs) {
        for (const std::wstring& name : {std::to_wstring(job.seqId), job.id}) {
            const auto place = found.find(name);
            if (place != found.end() && place->second == nullptr) {
                place->second = &job;
            }
        }
    }
    return found;
}

/// None of these names is an id, which is hexadecimal.
constexpr const wchar_t* lastJob = L"last";
constexpr const wchar_t* failedJobs = L"failed";

struct Range {
    std::int32_t first = 0;
    std::int32_t last = 0;
};

/// "3-9"
std::optional<Range> RangeOf(const std::wstring& name) {
    const std::size_t sign = name.find(L'-');
    const bool isRange = sign != 0 && sign != std::wstring::npos && sign + 1 < name.size() &&
                         name.find_first_not_of(L"0123456789", sign + 1) == std::wstring::npos &&
                         name.find_first_not_of(L"0123456789") == sign;
    return isRange ? std::optional(Range{numbers::ReadInteger(name), numbers::ReadInteger(name.substr(sign + 1))})
                   : std::nullopt;
}

/// True for a name that may stand for several jobs, or depends on the list.
bool IsGroup(const std::wstring& name) {
    return name == lastJob || name == failedJobs || RangeOf(name);
}

template <typename Condition>
std::vector<std::wstring> IdsWhere(const std::vector<ListedJob>& jobs, Condition condition) {
    std::vector<std::wstring> ids;
    for (const ListedJob& job : jobs) {
        if (condition(job)) {
            ids.push_back(job.id);
        }
    }
    return ids;
}

std::vector<std::wstring> LastOf(const std::vector<ListedJob>& jobs) {
    const auto last = std::max_element(jobs.begin(), jobs.end(), [](const ListedJob& left, const ListedJob& right) {
        return left.seqId < right.seqId;
    });
    return last == jobs.end() ? std::vector<std::wstring>() : std::vector{last->id};
}

/// The ids of a group's jobs; a name that is no group stays as it is. That no job has failed is no mistake.
std::vector<std::wstring> MembersOf(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                    const std::wstring& name) {
    if (name == failedJobs) {
        return IdsWhere(jobs, [](const ListedJob& job) { return job.status == JobStatus::Failed; });
    }
    const auto range = RangeOf(name);
    if (!range && name != lastJob) {
        return {name};
    }
    const auto isInRange = [&](const ListedJob& job) { return job.seqId >= range->first && job.seqId <= range->last; };
    std::vector<std::wstring> members = range ? IdsWhere(jobs, isInRange) : LastOf(jobs);
    if (members.empty()) {
        FailNoSuchJob(context, name);
    }
    return members;
}

std::vector<std::wstring> Expanded(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                   const std::vector<std::wstring>& names) {
    std::vector<std::wstring> expanded;
    for (const std::wstring& name : names) {
        const std::vector<std::wstring> members = MembersOf(context, jobs, name);
        expanded.insert(expanded.end(), members.begin(), members.end());
    }
    return expanded;
}

std::vector<ListedJob> Filtered(std::vector<ListedJob> jobs, const JobFilter& filter) {
    std::erase_if(jobs, [&](const ListedJob& job) { return !filter.Matches(job); });
    return jobs;
}

} // namespace

std::vector<ListedJob> SelectJobs(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                  const std::vector<std::wstring>& names) {
    const JobsByName jobsByName = FindJobs(jobs, names);
    std::set<std::wstring> selectedIds;
    std::vector<ListedJob> selected;
    for (const std::wstring& name : names) {
        const ListedJob* const job = jobsByName.at(name);
        if (job == nullptr) {
            FailNoSuchJob(context, name);
        }
        if (selectedIds.insert(job->id).second) {
            selected.push_back(*job);
        }
    }
    return selected;
}

std::vector<ListedJob> JobsOf(const CommandContext& context, HostSession& session, const Command& command) {
    const JobFilter filter(context, command);
    const bool isNamed = !command.ids.empty();
    if (isNamed && std::none_of(command.ids.begin(), command.ids.end(), IsGroup)) {
        return Filtered(SelectJobs(context, session.FetchJobs({command.ids}), command.ids), filter);
    }
    const std::vector<ListedJob> jobs = session.FetchJobs();
    return Filtered(isNamed ? SelectJobs(context, jobs, Expanded(context, jobs, command.ids)) : jobs, filter);
}

std::vector<std::wstring> IdsOf(const std::vector<ListedJob>& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const JobListInfo& job) { return job.id; });
    return ids;
}

} // namespace front_end
