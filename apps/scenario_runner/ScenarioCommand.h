#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/ScenarioManifest.h"
#include "services/Settings.h"

namespace scenario_runner {

/// How to start a scenario.
struct ScenarioCommand {
    /// Absolute path.
    std::wstring program;
    std::vector<std::wstring> arguments;
    /// Variables that differ from the runner's environment.
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> environment;
    /// For a script of a language with a scenario API: why it cannot load that; empty if it can.
    std::wstring apiProblem = {};
    /// The words of the settings or of the package that the command begins with; empty for a packaged program.
    std::vector<std::wstring> interpreter = {};
};

/// The paths of a scenario.
struct ScenarioPaths {
    /// The requested script or package.
    std::wstring scenarioPath;
    /// The directory of the unpacked package; empty for a script.
    std::wstring packageDirectory;
    /// Path of the run request as passed to the scenario, in native notation.
    std::wstring runInfoPath;
};

/// Functions that give access to the machine; replaceable in tests.
struct ScenarioEnvironment {
    /// The absolute path of an executable program, by its bare name or absolute path.
    std::function<std::optional<std::wstring>(const std::wstring&)> findProgram;
    /// True if a file or directory exists.
    std::function<bool(const std::wstring&)> exists;
    /// The current value of an environment variable.
    std::function<std::optional<std::wstring>(const std::wstring&)> getEnvironment;
};

/// Chooses the program that runs a scenario. For a script, the interpreter of its extension in the settings. For a
/// package, the program in its manifest; a bare interpreter name means the settings' interpreter of that name,
/// otherwise the one in PATH. If there is none, returns false and sets `problem`.
[[nodiscard]] bool ChooseCommand(const settings::Settings& settings,
                                 const scenario_manifest::ScenarioManifest& manifest, const ScenarioPaths& paths,
                                 const ScenarioEnvironment& environment, ScenarioCommand& command,
                                 std::wstring& problem);

} // namespace scenario_runner
