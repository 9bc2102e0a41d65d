#pragma once

#include <string>
#include <vector>

#include "local_process/ModuleResult.h"
#include "local_process/RunnerRegistry.h"

namespace local_process {

/// The functions of this module: scenarios run on this machine, each under a runner of its own.
///
/// - "RunScenario" takes the run request and answers with the handle of the runner's process, which the caller owns. It
///   returns as soon as the runner was started.
/// - "CancelScenario" takes a job's id and asks its runner to stop; `JobNotRunning` when this module runs no such job.
/// - "Terminate" asks all runners to stop. It does not wait for them; they end at once when this process ends.
///
/// A failure is in the log, and a failed start also in the job's result file and in the answer. Any thread.
class LocalProcess {
public:
    static std::vector<std::string> FunctionNames();

    /// Throws what the standard library throws.
    ModuleResult Call(const std::string& functionName, const std::wstring& input, std::wstring& output);

private:
    ModuleResult RunScenario(const std::wstring& request, std::wstring& answer);
    ModuleResult CancelScenario(const std::wstring& jobId);
    ModuleResult Terminate();

    RunnerRegistry registry;
};

} // namespace local_process
