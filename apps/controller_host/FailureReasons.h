#pragma once

#include <functional>
#include <string>

#include "CommonControllerLib/JobRecords.h"

/// Reasons of failures that the scenario itself did not report. They are written to the result file in the work
/// directory. If that cannot be written or already exists, the reason is written to a note beside the job list.
class FailureReasons {
public:
    explicit FailureReasons(std::wstring jobListFile) : list(std::move(jobListFile)) {}

    /// Writes the reason and logs it.
    void Leave(const JobListInfo& job, const std::wstring& reason) const;

    /// Removes the notes of the jobs whose ids are not listed.
    void KeepOnly(const std::function<bool(const std::wstring& id)>& isListed) const;

private:
    std::wstring list;
};
