#pragma once

#include <string>
#include <vector>

#include "formats/RunProtocol.h"
#include "platform/system/OwnedHandle.h"
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

/// Starts the runner program, detached from this process's terminal. It inherits only a handle to this process, by
/// which it notices this process's end. On failure, returns false and sets `problem`.
[[nodiscard]] bool StartRunner(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                               const RunnerProgram& program, platform::OwnedHandle& runner, std::wstring& problem);

} // namespace local_process
