#pragma once

#include "controller_cli/HostSession.h"
#include "controller_cli/JobRow.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace controller_cli {

/// Jobs of the host that are followed as they change.
class JobWatcher {
public:
    /// Follows all jobs, also those that come later. The session outlives this object.
    explicit JobWatcher(HostSession& hostSession);
    /// Follows these jobs alone. They are as the session's last job list has them, so that nothing that was told of
    /// them since is missed. One that has ended stays as it ended, also when it is deleted then.
    JobWatcher(HostSession& hostSession, const std::vector<JobListInfo>& jobs);

    const JobModel& Board() const { return board; }
    bool HaveAllEnded() const;

    /// Waits for changes, at most `interval`, and takes them over; the ids of the jobs that have changed, empty when
    /// none of them is followed or the time is over.
    std::vector<std::wstring> WaitForChanges(std::optional<std::chrono::milliseconds> interval = std::nullopt);

private:
    bool IsOfInterest(const JobStatusInfo& update) const;

    HostSession& session;
    bool followsAll;
    JobModel board;
};

} // namespace controller_cli
