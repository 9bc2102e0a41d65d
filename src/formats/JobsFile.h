#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

/// Jobs files, for programs that tell people what is wrong with one. Any thread.
namespace jobs_file {

/// Appends the requests of a jobs file of at most 256 MiB, in its order; relative paths are made absolute against the
/// file's directory. A member that no record has refuses the file. On failure nothing is appended, nothing is logged,
/// and `problem` says what is wrong, a line for each finding (20 members without meaning at most):
/// "/home/ann/jobs.json, line 3, column 14: EnqueueJobs[0].outputDir: expected text, found a number".
[[nodiscard]] CONTROLLER_API bool Read(const std::wstring& path, std::vector<EnqueueJobsInfo>& requests,
                                       std::wstring& problem);

/// Where a request, or one input set of it, stands in a jobs file as it is now: "line 4, column 23". Empty when that
/// cannot be told, because the file was changed or is no file any more.
CONTROLLER_API std::wstring PlaceOf(const std::wstring& path, std::size_t request,
                                    std::optional<std::size_t> inputSet = std::nullopt);

} // namespace jobs_file
