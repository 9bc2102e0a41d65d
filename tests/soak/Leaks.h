#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// What a host that has ended has left in its directory, where the fixture's files stand too, and should not have:
/// files that nobody knows, work directories without a job and jobs without theirs, more log than is kept, another list
/// than `jobs`. Empty when all is in order.
std::vector<std::string> FindLeaks(const std::wstring& directory, const std::vector<JobListInfo>& jobs);

/// The bytes of all log files in the directory.
std::uint64_t LogBytes(const std::wstring& directory);
