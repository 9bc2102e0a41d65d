#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// Wrong content of the host's directory after its end (the fixture's files are there too): unknown files, work
/// directories without a job, jobs without theirs, a log over the limit, a list other than `jobs`. Empty if there is
/// none.
std::vector<std::string> FindLeaks(const std::wstring& directory, const std::vector<JobListInfo>& jobs);

/// The total size of all log files in the directory.
std::uint64_t LogBytes(const std::wstring& directory);
