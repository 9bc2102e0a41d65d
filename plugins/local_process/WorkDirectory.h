#pragma once

#include <string>

#include "formats/RunProtocol.h"

namespace local_process {

/// Creates a job's work directory, accessible to this user only, removes the files of an earlier run that the
/// controller reads, and writes the request into it. On failure, returns false and sets `problem`.
[[nodiscard]] bool PrepareWorkDirectory(const run_protocol::RunScenarioInfo& info, std::wstring& problem);

/// Writes a failed result into the work directory for people to read. Best effort.
void LeaveFailedResult(const run_protocol::RunScenarioInfo& info, const std::wstring& problem);

} // namespace local_process
