#pragma once

#include "kit/processes/HostProcessFixture.h"

#include <string>
#include <vector>

/// Hosts under faults: their log, and their job list on disk.
class FaultFixture : public HostProcessFixture {
protected:
    FaultFixture();

    /// Writes settings with these paths for list, log and work directory, relative to the test's directory.
    void Place(const std::string& jobList, const std::string& log, const std::string& workDirectory);

    /// The list on disk, read without any change. Empty if there is none.
    std::vector<JobListInfo> SavedJobs() const;
    /// The host's log so far.
    std::string Log() const;
    int CountInLog(const std::string& part) const;

    void AwaitLog(const std::string& part) const;

    /// Runs jobs to their end, and checks their final status.
    void ExpectJobs(TestClient& frontEnd, const std::string& steps, int count, JobStatus status);
    /// Kills the host and starts another.
    void RestartHost();

    /// Files beside the list whose names contain this text.
    std::vector<std::wstring> BesideList(const std::wstring& part) const;

    std::wstring listFile;
    std::wstring logFile;
};
