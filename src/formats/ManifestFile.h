#pragma once

#include "formats/ScenarioManifest.h"

#include <string>
#include <vector>

namespace scenario_manifest {

/// Reads what stands beside a script: time limit, exit codes and parameter sets. False, with `problem` naming the place
/// in the text, the member and what was expected. `warnings` are appended: members that mean nothing, one text each.
[[nodiscard]] bool ParseScriptManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                                       std::vector<std::wstring>& warnings);

/// Reads the manifest of a package, as above. It must have a display name, and say how to run the package.
[[nodiscard]] bool ParsePackageManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                                        std::vector<std::wstring>& warnings);

} // namespace scenario_manifest
