#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// What a scenario says of itself: the "manifest.json" of a package, or "<name>.scenario.json" beside a script.
namespace scenario_manifest {

struct ScenarioManifest {
    std::wstring displayName;
    std::vector<InputFileSpec> inputs;
    /// Script inside the package, with slashes; runs with `interpreter`.
    std::wstring entryPoint;
    std::wstring interpreter;
    /// Program inside the package, with slashes; instead of `entryPoint`.
    std::wstring executable;
    /// 0: no limit.
    std::int32_t timeLimitSeconds = 0;
    std::vector<std::int32_t> successExitCodes = {0};
    std::vector<ScenarioParameterSetInfo> parameterSets;

    bool operator==(const ScenarioManifest&) const = default;
};

/// True when the path ends in ".esa" (as this system compares names).
CONTROLLER_API bool IsPackage(const std::wstring& scenarioPath);

/// Reads the manifest that belongs to a scenario. A script without one gets the defaults. False, with `problem` saying
/// what is wrong with which file, when it is broken or a package has none.
[[nodiscard]] CONTROLLER_API bool ReadFor(const std::wstring& scenarioPath, ScenarioManifest& manifest,
                                          std::wstring& problem);

} // namespace scenario_manifest
