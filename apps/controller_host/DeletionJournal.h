#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// A journal of the jobs being deleted, in a file beside the job list. The file exists only while work directories are
/// being removed, or after a removal failed. A host thereby detects a deletion that an earlier host did not finish.
class DeletionJournal {
public:
    explicit DeletionJournal(const std::wstring& jobListFile) : path(FileBeside(jobListFile)) {}

    static std::wstring FileBeside(const std::wstring& jobListFile) { return jobListFile + L".deletions"; }

    /// The journaled jobs; none if there is no file.
    std::vector<JobListInfo> Read() const;
    /// Adds jobs to the journal. A failed write is logged; the deletion continues without the journal.
    void Add(const std::vector<JobListInfo>& jobs) const;
    /// Called when the journaled jobs have left the list. Tries again to remove the remaining work directories, and
    /// keeps the entries of those that cannot be removed.
    void Retry() const;

private:
    void Write(const std::vector<JobListInfo>& jobs) const;

    std::wstring path;
};
