#include "front_end/jobs/JobWatcher.h"
#include "formats/JobStates.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace front_end {

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
    bool isListNeeded = false;
    for (const JobStatusInfo& update : session.WaitForUpdates(interval)) {
        if (!IsOfInterest(update)) {
            continue;
        }
        const bool isKnown = board.Update(update) != nullptr;
        if (isKnown) {
            changed.push_back(update.id);
        }
        // A report does not contain all data of a new job, nor what was edited, nor the attempts of a job that is
        // queued again.
        isListNeeded =
            isListNeeded || update.status == JobStatus::Queued || (!isKnown && update.status != unlistedStatus);
    }
    if (isListNeeded) {
        const std::set<std::wstring> reported(changed.begin(), changed.end());
        const std::vector<std::wstring> renewed = Renew();
        std::copy_if(renewed.begin(), renewed.end(), std::back_inserter(changed),
                     [&](const std::wstring& id) { return !reported.contains(id); });
    }
    return changed;
}

std::vector<std::wstring> JobWatcher::Renew() {
    return board.Renew(followsAll ? session.FetchJobs() : session.FetchJobs({board.Ids()}));
}

} // namespace front_end
