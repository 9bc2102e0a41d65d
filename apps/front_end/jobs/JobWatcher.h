#pragma once

#include "front_end/connection/HostSession.h"
#include "front_end/jobs/JobRow.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace front_end {

/// Tracks changes of the host's jobs.
class JobWatcher {
public:
    /// Tracks all jobs, including new ones. The session must outlive this object.
    explicit JobWatcher(HostSession& hostSession);
    /// Tracks only these jobs. They must be taken from the session's last job list, so that no later report is missed.
    /// A job that has ended keeps its final state, even if it is then deleted.
    JobWatcher(HostSession& hostSession, const std::vector<ListedJob>& jobs);

    const JobModel& Board() const { return board; }
    bool HaveAllEnded() const;

    /// Waits at most `interval` for changes and applies them. Returns the ids of the changed jobs; empty if no tracked
    /// job has changed or on timeout.
    std::vector<std::wstring> WaitForChanges(std::optional<std::chrono::milliseconds> interval = std::nullopt);

private:
    bool IsOfInterest(const JobStatusInfo& update) const;
    std::vector<std::wstring> Renew();

    HostSession& session;
    bool followsAll;
    JobModel board;
};

} // namespace front_end
