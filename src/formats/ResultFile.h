#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

#include "formats/RunProtocol.h"

/// The result file in a job's work directory, for the programs that run scenarios. Threads: any.
namespace run_protocol {

/// Removes the file of an earlier run; only a result of this run counts. Returns false on failure; a missing file is
/// none.
[[nodiscard]] CONTROLLER_API bool RemoveResult(const std::wstring& workDir);

/// True also for a dangling link.
[[nodiscard]] CONTROLLER_API bool ResultExists(const std::wstring& workDir);

/// Replaces the file as `WriteFile` does. Returns false on failure.
[[nodiscard]] CONTROLLER_API bool WriteResult(const std::wstring& workDir, const RunScenarioResult& result);

/// The result of a scenario that could not be started or did not end by itself.
[[nodiscard]] CONTROLLER_API RunScenarioResult FailedResult(const std::wstring& jobId, const std::wstring& problem);

} // namespace run_protocol
