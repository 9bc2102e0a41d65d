#include "front_end/commands/JobSelection.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>

#include "front_end/commands/CommandFailure.h"

namespace front_end {
namespace {

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

} // namespace

std::vector<ListedJob> SelectJobs(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                  const std::vector<std::wstring>& names) {
    const JobsByName jobsByName = FindJobs(jobs, names);
    std::set<std::wstring> selectedIds;
    std::vector<ListedJob> selected;
    for (const std::wstring& name : names) {
        const ListedJob* const job = jobsByName.at(name);
        if (job == nullptr) {
            throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/NoSuchJob", {name})};
        }
        if (selectedIds.insert(job->id).second) {
            selected.push_back(*job);
        }
    }
    return selected;
}

std::vector<std::wstring> IdsOf(const std::vector<ListedJob>& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const JobListInfo& job) { return job.id; });
    return ids;
}

} // namespace front_end
