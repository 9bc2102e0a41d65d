#pragma once

#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "platform/processes/Process.h"
#include "services/Settings.h"

namespace local_process {

/// The program that supervises a scenario.
struct RunnerProgram {
    /// Absolute path.
    std::wstring path;
    /// Arguments in addition to those of `scenario_runner`.
    std::vector<std::wstring> arguments;
    /// What a user can do if the program file is missing or cannot be run.
    std::wstring advice;
};

/// True if a runner finds these settings, which are in force: their file can be read now, or they have none.
bool CanReadSettings(const settings::Settings& settings);

/// How a runner is started, as far as it is the same for all jobs: detached from this process's terminal. It inherits
/// only `host`, a handle to this process, by which it notices this process's end.
platform::ProcessStart CommonStart(const RunnerProgram& program, const std::wstring& settingsFile,
                                   const platform::OwnedHandle& host);

/// Starts the runner program for a job. On failure, returns false and sets `problem`.
[[nodiscard]] bool StartRunner(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                               const RunnerProgram& program, platform::OwnedHandle& runner, std::wstring& problem);

} // namespace local_process
