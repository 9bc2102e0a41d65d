#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// The jobs that a host is deleting, noted in a file beside the job list. It stands there only while work directories
/// are being removed, or when one could not be: so a host learns what the sudden end of an earlier one interrupted.
class DeletionJournal {
public:
    explicit DeletionJournal(const std::wstring& jobListFile) : path(FileBeside(jobListFile)) {}

    static std::wstring FileBeside(const std::wstring& jobListFile) { return jobListFile + L".deletions"; }

    /// The jobs noted; none when there is no file.
    std::vector<JobListInfo> Read() const;
    /// Notes jobs besides those noted already. A note that cannot be written is logged; deleting goes on without.
    void Add(const std::vector<JobListInfo>& jobs) const;
    /// To be called when the noted jobs have left the list: tries once more to remove the work directories that are
    /// still there, and keeps the notes of those that stay.
    void Settle() const;

private:
    void Write(const std::vector<JobListInfo>& jobs) const;

    std::wstring path;
};
