#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "formats/SlurmOptions.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace scenario_package {
class Package;
}

/// The description of a scenario: the "manifest.json" of a package, or "<name>.scenario.json" beside a script.
namespace scenario_manifest {

struct ScenarioManifest {
    std::wstring displayName;
    std::vector<InputFileSpec> inputs;
    /// The path of the script in the package, with slashes; run by `interpreter`.
    std::wstring entryPoint;
    std::wstring interpreter;
    /// The path of the program in the package, with slashes; used instead of `entryPoint`. The name is that of the
    /// program for this system.
    std::wstring executable;
    /// 0 means no limit.
    std::int32_t timeLimitSeconds = 0;
    std::vector<std::int32_t> successExitCodes = {0};
    /// The resources that each job takes while it runs, as in requests.
    std::map<std::wstring, std::int64_t> needs;
    std::vector<ScenarioParameterSetInfo> parameterSets;
    /// Used if the function module "slurm" runs the scenario.
    slurm::SlurmOptions slurm;

    bool operator==(const ScenarioManifest&) const = default;
};

/// Returns true if the path ends in ".esa", compared by the rules of this system.
CONTROLLER_API bool IsPackage(const std::wstring& scenarioPath);

/// Returns the path of the manifest beside a script: "C:\s\mesh_report.scenario.json" for "C:\s\mesh_report.rb". It may
/// be missing.
CONTROLLER_API std::wstring ManifestBeside(const std::wstring& script);

/// Reads the manifest of an open package, as `ReadFor` does.
[[nodiscard]] CONTROLLER_API bool ReadFrom(const scenario_package::Package& package, ScenarioManifest& manifest,
                                           std::wstring& problem);

/// Reads the manifest of a scenario. A script without a manifest gets the defaults. On Windows the executable of a
/// package is the file of that name with ".exe", if the package has one. On failure (an invalid manifest, a package
/// without one, or without the file to run) returns false and sets `problem` to the file and the error.
[[nodiscard]] CONTROLLER_API bool ReadFor(const std::wstring& scenarioPath, ScenarioManifest& manifest,
                                          std::wstring& problem);

} // namespace scenario_manifest
