#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "support/TemporaryDirectory.h"

#include <string>

/// A directory with settings of its own, in force as long as it lives: so many jobs at a time.
class Workplace {
public:
    explicit Workplace(int parallelJobs = 1);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::wstring Path(const std::wstring& name) const { return directory / name; }
    std::wstring JobListFile() const { return Path(L"job_list.json"); }
    /// A file with something in it.
    std::wstring MakeFile(const std::wstring& name) const;

private:
    TemporaryDirectory directory;
};

/// A job as it stands in a list after it has run.
JobListInfo FinishedJob(int number);
