#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace controller_cli {

/// What is shown of one job.
struct JobRow {
    JobListInfo job;
    /// 0 to 100: how far the scenario is, or was when the job failed or was cancelled. (`job` says 100 of every job
    /// that has ended.)
    std::int32_t progress = 0;
    /// What the scenario is doing, or the first message of its result; empty when it says nothing.
    std::wstring message;
    /// All messages of its result.
    std::vector<std::wstring> messages;
    /// The files that its result names.
    std::vector<std::wstring> outputFiles;
    /// The directory of this job's results, and its work directory; empty while there is none.
    std::wstring outputFolder;
    std::wstring workDirectory;
};

/// The name of a status in documents and in the keys of texts; "Deleted" for `unlistedStatus`.
std::wstring StatusName(JobStatus status);

/// Reads what the job's work directory says.
JobRow ViewOf(const JobListInfo& job);

/// The seconds that a job has run, or ran; -1 when it never started.
std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now);

/// Jobs in list order, kept up to date from the host's reports.
class JobModel {
public:
    explicit JobModel(const std::vector<JobListInfo>& jobs);

    /// Takes a report over. The job, or null for one that is not on the board. A deleted one stays, with
    /// `unlistedStatus`.
    const JobRow* Update(const JobStatusInfo& report);

    /// Takes over the list as it is now: known jobs are brought up to date, new ones added at the end. The
    /// ids of those that have changed.
    std::vector<std::wstring> Renew(const std::vector<JobListInfo>& jobs);

    /// Null for a job that is not on the board.
    const JobRow* Find(const std::wstring& id) const;

    const std::vector<JobRow>& Views() const { return views; }
    std::vector<std::wstring> Ids() const;

private:
    std::vector<JobRow> views;
    std::map<std::wstring, std::size_t> indexById;
};

} // namespace controller_cli
