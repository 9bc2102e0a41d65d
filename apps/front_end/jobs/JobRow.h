#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "formats/Scheduling.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace front_end {

/// The displayed data of one job.
struct JobRow {
    ListedJob job;
    /// Percent, 0 to 100: the scenario's progress, or its last progress if the job failed or was cancelled. (`job` has
    /// 100 for every job that has ended.)
    std::int32_t progress = 0;
    /// The scenario's current activity, or the first message of its result; empty if there is none.
    std::wstring message;
    /// All messages of the result.
    std::vector<std::wstring> messages;
    /// The output files named in the result.
    std::vector<std::wstring> outputFiles;
    /// The directory of this job's results, and its work directory; empty if there is none.
    std::wstring outputFolder;
    std::wstring workDirectory;
};

/// The name of a status in documents and in text keys; "Deleted" for `unlistedStatus`.
std::wstring StatusName(JobStatus status);

/// The job after this report.
ListedJob Updated(ListedJob job, const JobStatusInfo& report);

/// Reads the files in the job's work directory.
JobRow ViewOf(ListedJob job);
std::vector<JobRow> ViewsOf(std::vector<ListedJob> jobs);

/// Adds to a job that is over what its result tells, and its last progress if it did not succeed.
void ReadEnding(JobRow& row);

/// A point in time in the form of a job's record ("2026-03-05T07:08:09Z"); empty for 0, which is no time.
std::wstring TimeText(std::int64_t time);

/// The running time of a job in seconds; -1 if it never started.
std::int64_t SecondsOf(const JobListInfo& job, std::int64_t now);

/// Jobs in list order, updated from the host's reports.
class JobModel {
public:
    explicit JobModel(const std::vector<ListedJob>& jobs);

    /// Applies a report. Returns the job, or null for an unknown one. A deleted job is kept with the status
    /// `unlistedStatus`.
    const JobRow* Update(const JobStatusInfo& report);

    /// Applies the current job list: updates known jobs and appends new ones. Returns the ids of the changed jobs.
    std::vector<std::wstring> Renew(const std::vector<ListedJob>& jobs);

    /// Null for an unknown job.
    const JobRow* Find(const std::wstring& id) const;

    const std::vector<JobRow>& Views() const { return views; }
    std::vector<std::wstring> Ids() const;

private:
    std::vector<JobRow> views;
    std::map<std::wstring, std::size_t> indexById;
};

} // namespace front_end
