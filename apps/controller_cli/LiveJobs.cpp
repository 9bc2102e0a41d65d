#include "controller_cli/LiveJobs.h"

#include <algorithm>

namespace controller_cli {

LiveJobs::LiveJobs(HostSession& hostSession) : session(hostSession), followsAll(true), board(hostSession.FetchJobs()) {}

LiveJobs::LiveJobs(HostSession& hostSession, const std::vector<JobListInfo>& jobs)
    : session(hostSession), followsAll(false), board(jobs) {}

bool LiveJobs::IsOfInterest(const JobStatusInfo& update) const {
    if (followsAll) {
        return true;
    }
    const JobView* const view = board.Find(update.id);
    return view != nullptr && !(update.status == deletedStatus && HasEnded(view->job.status));
}

bool LiveJobs::HaveAllEnded() const {
    return std::all_of(board.Views().begin(), board.Views().end(),
                       [](const JobView& view) { return HasEnded(view.job.status); });
}

std::vector<std::wstring> LiveJobs::WaitForChanges(std::optional<std::chrono::milliseconds> interval) {
    std::vector<std::wstring> changed;
    bool hasNewJobs = false;
    for (const JobStatusInfo& update : session.WaitForUpdates(interval)) {
        if (!IsOfInterest(update)) {
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
        const std::vector<std::wstring> renewed = board.Renew(session.FetchJobs());
        changed.insert(changed.end(), renewed.begin(), renewed.end());
    }
    return changed;
}

} // namespace controller_cli
