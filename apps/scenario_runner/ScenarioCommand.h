#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/ScenarioManifest.h"
#include "services/Settings.h"

namespace scenario_runner {

/// How a scenario is started.
struct ScenarioCommand {
    /// Absolute.
    std::wstring program;
    std::vector<std::wstring> arguments;
    /// Variables that differ from the runner's own.
    std::vector<std::pair<std::wstring, std::optional<std::wstring>>> environment;
    /// For a Ruby script: why it cannot load the scenario API; empty when it can.
    std::wstring apiProblem = {};
};

/// Where a scenario's files stand.
struct ScenarioPlace {
    /// The script or package that was asked for.
    std::wstring scenarioPath;
    /// Where the package was unpacked; empty for a script.
    std::wstring packageDirectory;
    /// What the scenario is told about its run, as it is told (native).
    std::wstring runInfoPath;
};

/// What choosing needs from the machine.
struct ScenarioSurroundings {
    /// The absolute path of a program by its bare name or absolute path, when it can be run.
    std::function<std::optional<std::wstring>(const std::wstring&)> findProgram;
    /// True when a file or directory exists.
    std::function<bool(const std::wstring&)> exists;
    /// What a variable holds now.
    std::function<std::optional<std::wstring>(const std::wstring&)> getEnvironment;
};

/// Picks the program that runs a scenario: for a script the interpreter of its extension in the settings; for a package
/// what its manifest names, where a bare interpreter name means the one that the settings use under that name, or else
/// the one in PATH. False, with `problem`, when there is none.
[[nodiscard]] bool ChooseCommand(const settings::Settings& settings,
                                 const scenario_manifest::ScenarioManifest& manifest, const ScenarioPlace& place,
                                 const ScenarioSurroundings& surroundings, ScenarioCommand& command,
                                 std::wstring& problem);

} // namespace scenario_runner
