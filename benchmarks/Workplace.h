#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "kit/TemporaryDirectory.h"

#include <string>

/// A directory with its own settings, in force during its lifetime; the parameter is `parallelJobs`.
class Workplace {
public:
    explicit Workplace(int parallelJobs = 1);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::wstring Path(const std::wstring& name) const { return directory / name; }
    std::wstring JobListFile() const { return Path(L"job_list.json"); }
    /// Creates a small file.
    std::wstring MakeFile(const std::wstring& name) const;
    /// Writes a job list of this many jobs that have ended.
    void WriteJobList(std::size_t rows) const;

private:
    TemporaryDirectory directory;
};

/// The list record of a job that has run.
JobListInfo FinishedJob(int number);
