#pragma once

#include <string>
#include <vector>

namespace scenario_runner {

/// The parsed command line of the runner.
struct RunnerArguments {
    /// The job's work directory, absolute. It contains all other inputs.
    std::wstring workDir;
    /// The settings file to use; empty: the default search order.
    std::wstring settingsFile;
    /// The inherited handle of the host's process as text; empty: the runner does not depend on a host.
    std::wstring host;
};

/// Parses `--work-dir DIR [--host HANDLE] [--settings FILE]`. For anything else, returns false and sets `problem`.
[[nodiscard]] bool ParseRunnerArguments(const std::vector<std::wstring>& arguments, RunnerArguments& parsed,
                                        std::wstring& problem);

} // namespace scenario_runner
