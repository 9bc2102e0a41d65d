#pragma once

#include <string>
#include <vector>

#include "local_process/ModuleResult.h"
#include "local_process/RunnerRegistry.h"
#include "local_process/RunnerServer.h"
#include "local_process/RunnerStart.h"

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
    LocalProcess() = default;
    virtual ~LocalProcess() = default;
    LocalProcess(const LocalProcess&) = delete;
    LocalProcess& operator=(const LocalProcess&) = delete;

    virtual std::vector<std::string> FunctionNames() const;

    /// Throws only exceptions of the standard library.
    virtual ModuleResult Call(const std::string& functionName, const std::wstring& input, std::wstring& output);

private:
    /// The program that supervises the scenario of this job.
    virtual RunnerProgram ChooseRunner(const run_protocol::RunScenarioInfo& info,
                                       const settings::Settings& settings) const;
    ModuleResult RunScenario(const std::wstring& request, std::wstring& answer);
    ModuleResult CancelScenario(const std::wstring& jobId);
    ModuleResult Terminate();

    RunnerRegistry registry;
    RunnerServer server;
};

/// The module that the exported functions call; each module of this kind defines it. It lives as long as the module is
/// loaded.
LocalProcess& Module();

} // namespace local_process
