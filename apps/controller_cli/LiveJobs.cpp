#include "controller_cli/LiveJobs.h"

#include <algorithm>

namespace controller_cli {
LiveJobs::LiveJobs(HostSession& hostSession) : session(hostSession), followsAll(true), board(hostSession.FetchJobs()) {}

LiveJobs::LiveJobs(HostSession& hostSession, const std::vector<std::wstring>& ids)
    : session(hostSession), followsAll(false), followed(ids.begin(), ids.end()),
      board(Selected(hostSession.FetchJobs())) {}

std::vector<JobListInfo> LiveJobs::Selected(std::vector<JobListInfo> jobs) const {
    std::erase_if(jobs, [this](const JobListInfo& job) { return !IsFollowed(job.id); });
    return jobs;
}

bool LiveJobs::HaveAllEnded() const {
    return std::all_of(board.Views().begin(), board.Views().end(),
                       [](const JobView& view) { return HasEnded(view.job.status); });
}

std::vector<std::wstring> LiveJobs::WaitForChanges() {
    std::vector<std::wstring> changed;
    bool hasNewJobs = false;
    for (const JobStatusInfo& update : session.WaitForUpdates()) {
        if (!IsFollowed(update.id)) {
            continue;
        }
        if (board.Update(update) != nullptr) {
            changed.push_back(update.id);
        } else if (update.status != deletedStatus) {
            hasNewJobs = true;
        }
    }
    if (hasNewJobs) {
        // A report does not say everything of a job that is new to the board.
        const std::vector<std::wstring> renewed = board.Renew(Selected(session.FetchJobs()));
        changed.insert(changed.end(), renewed.begin(), renewed.end());
    }
    return changed;
}

} // namespace controller_cli
