#pragma once

#include <set>
#include <string>

#include "CommonControllerLib/JobRecords.h"

/// Why jobs failed, for those whose scenario did not say it: people and front ends find it in the result file of the
/// work directory. Where that cannot be written, or holds something else, it stands in a note beside the job list.
class FailureReasons {
public:
    explicit FailureReasons(std::wstring jobListFile) : list(std::move(jobListFile)) {}

    /// Leaves the reason, and tells it in the log.
    void Leave(const JobListInfo& job, const std::wstring& reason) const;

    /// Removes the notes of jobs that are not listed any more.
    void KeepOnly(const std::set<std::wstring>& listedIds) const;

private:
    std::wstring list;
};
