#pragma once

#include "records/JobRecords.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace controller_cli {

/// What a report says of a job that has been deleted.
inline constexpr JobStatus deletedStatus = static_cast<JobStatus>(-1);

/// What is shown of one job.
struct JobView {
    JobListInfo job;
    /// The scenario's last word: what it is doing, or why it failed; empty when it says nothing.
    std::wstring message;
};

/// A job that neither waits nor runs.
bool HasEnded(JobStatus status);

/// Reads the job's message from its work directory.
JobView ViewOf(const JobListInfo& job);

/// The seconds that a job has run, or ran; -1 when it never started.
std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now);

/// Jobs in list order, kept up to date from the host's reports.
class JobBoard {
public:
    explicit JobBoard(const std::vector<JobListInfo>& jobs);

    /// Takes a report over. The job, or null for one that is not on the board. A deleted one stays, with
    /// `deletedStatus`.
    const JobView* Update(const JobStatusInfo& report);

    /// Takes over the list as it is now: known jobs are brought up to date, new ones added at the end. The
    /// ids of those that have changed.
    std::vector<std::wstring> Renew(const std::vector<JobListInfo>& jobs);

    const std::vector<JobView>& Views() const { return views; }

private:
    std::vector<JobView> views;
    std::map<std::wstring, std::size_t> indexById;
};

} // namespace controller_cli
