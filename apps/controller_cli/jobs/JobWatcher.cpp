#include "controller_cli/jobs/JobWatcher.h"
#include "formats/JobStates.h"

#include <algorithm>

namespace controller_cli {

JobWatcher::JobWatcher(HostSession& hostSession)
    : session(hostSession), followsAll(true), board(hostSession.FetchJobs()) {}

JobWatcher::JobWatcher(HostSession& hostSession, const std::vector<ListedJob>& jobs)
    : session(hostSession), followsAll(false), board(jobs) {}

bool JobWatcher::IsOfInterest(const JobStatusInfo& update) const {
    if (followsAll) {
        return true;
    }
    const JobRow* const view = board.Find(update.id);
    return view != nullptr && !(update.status == unlistedStatus && IsOver(view->job.status));
}

bool JobWatcher::HaveAllEnded() const {
    return std::all_of(board.Views().begin(), board.Views().end(),
                       [](const JobRow& view) { return IsOver(view.job.status); });
}

std::vector<std::wstring> JobWatcher::WaitForChanges(std::optional<std::chrono::milliseconds> interval) {
    std::vector<std::wstring> changed;
    bool hasNewJobs = false;
    for (const JobStatusInfo& update : session.WaitForUpdates(interval)) {
        if (!IsOfInterest(update)) {
            continue;
        }
        if (board.Update(update) != nullptr) {
            changed.push_back(update.id);
        } else if (update.status != unlistedStatus) {
            hasNewJobs = true;
        }
    }
    if (hasNewJobs) {
        // A report does not contain all data of a job that is new to the board.
        const std::vector<std::wstring> renewed = board.Renew(session.FetchJobs());
        changed.insert(changed.end(), renewed.begin(), renewed.end());
    }
    return changed;
}

} // namespace controller_cli
