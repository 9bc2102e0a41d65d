#include "controller_cli/commands/JobSelection.h"

#include <algorithm>
#include <iterator>

#include "controller_cli/commands/CommandFailure.h"

namespace controller_cli {
namespace {

bool IsNamed(const JobListInfo& job, const std::wstring& name) {
    return std::to_wstring(job.seqId) == name || job.id == name;
}

} // namespace

std::vector<JobListInfo> SelectJobs(const CommandContext& context, const std::vector<JobListInfo>& jobs,
                                    const std::vector<std::wstring>& names) {
    std::vector<JobListInfo> selected;
    for (const std::wstring& name : names) {
        const auto found =
            std::find_if(jobs.begin(), jobs.end(), [&](const JobListInfo& job) { return IsNamed(job, name); });
        if (found == jobs.end()) {
            throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/NoSuchJob", {name})};
        }
        const auto isSame = [&](const JobListInfo& job) { return job.id == found->id; };
        if (std::none_of(selected.begin(), selected.end(), isSame)) {
            selected.push_back(*found);
        }
    }
    return selected;
}

std::vector<std::wstring> IdsOf(const std::vector<JobListInfo>& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.begin(), jobs.end(), std::back_inserter(ids), [](const JobListInfo& job) { return job.id; });
    return ids;
}

} // namespace controller_cli
