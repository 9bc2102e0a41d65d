#pragma once

#include "HostProcessFixture.h"

#include <string>
#include <vector>

/// Hosts in trouble: what they log, and what their job list says on the disk.
class FaultFixture : public HostProcessFixture {
protected:
    FaultFixture();

    /// Settings whose list, log and work directory are these, relative to the test's directory.
    void Place(const std::string& jobList, const std::string& log, const std::string& workDirectory);

    /// The list as it stands on the disk; nothing is changed by looking. Empty when there is none.
    std::vector<JobListInfo> SavedJobs() const;
    /// What the host has logged so far.
    std::string Log() const;
    int CountInLog(const std::string& part) const;

    void AwaitLog(const std::string& part) const;

    /// Runs jobs to their end, and expects all to end so.
    void ExpectJobs(TestClient& frontEnd, const std::string& steps, int count, JobStatus status);
    /// Ends the host by force and starts another.
    void RestartHost();

    /// Files beside the list whose names have this part.
    std::vector<std::wstring> BesideList(const std::wstring& part) const;

    std::wstring listFile;
    std::wstring logFile;
};
