#pragma once

#include "CommonControllerLib/Export.h"
#include "formats/Scheduling.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The bodies of requests to the HTTP interface, in UTF-8. An unknown member rejects a body. On failure the functions
/// return false, leave their outputs unchanged, and set `problem`: "line 3, column 14: priority: expected a whole
/// number from -1000 to 1000". Threads: any.
namespace web_requests {

/// The most jobs that one request may name.
inline constexpr std::size_t mostJobs = 100'000;

/// {"ids":["1f","7"]}: at least one id or number (decimal text).
[[nodiscard]] CONTROLLER_API bool ReadJobs(std::string body, std::vector<std::wstring>& jobs, std::wstring& problem);

/// The same with what is to be changed, at least one of "hold", "priority", "notBefore" and "needs".
[[nodiscard]] CONTROLLER_API bool ReadEdit(std::string body, JobsEdit& edit, std::wstring& problem);

/// {"paused":true}
[[nodiscard]] CONTROLLER_API bool ReadQueueState(std::string body, QueueState& state, std::wstring& problem);

} // namespace web_requests
