#pragma once

#include <string>
#include <vector>

namespace scenario_runner {

/// What the runner is told on its command line.
struct RunnerArguments {
    /// The job's work directory, absolute. All else stands in it.
    std::wstring workDir;
    /// The settings file to use; empty: the one that the settings find themselves.
    std::wstring settingsFile;
    /// The inherited handle of the host's process as text; empty: nobody whose end would matter.
    std::wstring host;
};

/// Reads `--work-dir DIR [--host HANDLE] [--settings FILE]`. False, with `problem`, for anything else.
[[nodiscard]] bool ParseRunnerArguments(const std::vector<std::wstring>& arguments, RunnerArguments& parsed,
                                        std::wstring& problem);

} // namespace scenario_runner
