#pragma once

#include "controller_cli/HostSession.h"
#include "controller_cli/JobView.h"

#include <set>
#include <string>
#include <vector>

namespace controller_cli {

/// Jobs of the host that are followed as they change.
class LiveJobs {
public:
    /// Follows all jobs, also those that come later. The session outlives this object.
    explicit LiveJobs(HostSession& hostSession);
    /// Follows these jobs alone, by their ids.
    LiveJobs(HostSession& hostSession, const std::vector<std::wstring>& ids);

    const JobBoard& Board() const { return board; }
    bool HaveAllEnded() const;

    /// Waits for changes and takes them over; the ids of the jobs that have changed, empty when none of them is
    /// followed.
    std::vector<std::wstring> WaitForChanges();

private:
    bool IsFollowed(const std::wstring& id) const { return followsAll || followed.contains(id); }
    std::vector<JobListInfo> Selected(std::vector<JobListInfo> jobs) const;

    HostSession& session;
    bool followsAll;
    std::set<std::wstring> followed;
    JobBoard board;
};

} // namespace controller_cli
