#pragma once

#include <string>
#include <vector>

#include "local_process/ModuleResult.h"
#include "local_process/RunnerRegistry.h"

namespace local_process {

/// The functions of this module. Each scenario runs on this machine, supervised by a runner process of its own.
///
/// - "RunScenario" takes the run request and answers with the handle of the runner's process, which the caller owns. It
///   returns as soon as the runner has started.
/// - "CancelScenario" takes a job's id and asks its runner to stop; `JobNotRunning` if this module runs no such job.
/// - "Terminate" asks all runners to stop and does not wait for them. A runner ends as soon as this process ends.
///
/// On failure, the log says why; a failed start is also reported in the job's result file and in the answer.
/// Threads: any.
class LocalProcess {
public:
    static std::vector<std::string> FunctionNames();

    /// Throws only exceptions of the standard library.
    ModuleResult Call(const std::string& functionName, const std::wstring& input, std::wstring& output);

private:
    ModuleResult RunScenario(const std::wstring& request, std::wstring& answer);
    ModuleResult CancelScenario(const std::wstring& jobId);
    ModuleResult Terminate();

    RunnerRegistry registry;
};

} // namespace local_process
