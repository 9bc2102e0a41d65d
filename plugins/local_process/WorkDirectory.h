#pragma once

#include <string>

#include "formats/RunProtocol.h"

namespace local_process {

/// Makes a job's work directory, for this user alone, without anything that an earlier run left in it that the
/// controller would take for this run's, and with the request in it. False, with `problem`.
[[nodiscard]] bool PrepareWorkDirectory(const run_protocol::RunScenarioInfo& info, std::wstring& problem);

/// Leaves a failed result in the work directory, so that people see why. Best effort.
void LeaveFailedResult(const run_protocol::RunScenarioInfo& info, const std::wstring& problem);

} // namespace local_process
