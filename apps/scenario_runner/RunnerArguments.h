#pragma once

#include <string>
#include <vector>

namespace scenario_runner {

/// The parsed command line of the runner.
struct RunnerArguments {
    /// The job's work directory, absolute. It contains all other inputs. Empty for a server of runners.
    std::wstring workDir;
    /// The inherited handle of a server of runners as text: each request is a work directory.
    std::wstring serve;
    /// The settings file to use; empty: the default search order.
    std::wstring settingsFile;
    /// The inherited handle of the host's process as text; empty: the runner does not depend on a host.
    std::wstring host;
};

/// Parses `--work-dir DIR [--host HANDLE] [--settings FILE]`, or `--serve HANDLE` in place of the work directory. For
/// anything else, returns false and sets `problem`.
[[nodiscard]] bool ParseRunnerArguments(const std::vector<std::wstring>& arguments, RunnerArguments& parsed,
                                        std::wstring& problem);

} // namespace scenario_runner
