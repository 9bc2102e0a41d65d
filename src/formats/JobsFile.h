#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "formats/Scheduling.h"

/// Jobs files, for programs that report errors in them to people. Threads: any.
namespace jobs_file {

/// Appends the requests of a jobs file of at most 256 MiB, in its order; resolves relative paths against the file's
/// directory. An unknown member rejects the file. On failure appends and logs nothing, returns false, and sets
/// `problem` to one line per error (at most 20 for unknown members): "/home/ann/jobs.json, line 3, column 14:
/// EnqueueJobs[0].outputDir: expected text, found a number".
[[nodiscard]] CONTROLLER_API bool Read(const std::wstring& path, std::vector<ScheduledRequest>& requests,
                                       std::wstring& problem);

/// Same for the content of a jobs file that has no file, such as standard input: `name` stands for its path in
/// `problem`; relative paths are resolved against `directory`, or if that is empty, against the current directory.
[[nodiscard]] CONTROLLER_API bool ReadText(std::string bytes, const std::wstring& name,
                                           std::vector<ScheduledRequest>& requests, std::wstring& problem,
                                           const std::wstring& directory = {});

/// Returns the position of a request, or of one of its input sets, in the current jobs file: "line 4, column 23".
/// Returns an empty text if the file has changed or no longer exists.
CONTROLLER_API std::wstring PlaceOf(const std::wstring& path, std::size_t request,
                                    std::optional<std::size_t> inputSet = std::nullopt);

} // namespace jobs_file
