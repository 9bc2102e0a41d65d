#pragma once

#include "formats/ScenarioManifest.h"

#include <string>
#include <vector>

namespace scenario_manifest {

/// Parses the manifest beside a script: time limit, exit codes and parameter sets. Appends one text per unknown member
/// to `warnings`. On failure returns false and sets `problem` to position, member and what was expected.
[[nodiscard]] bool ParseScriptManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                                       std::vector<std::wstring>& warnings);

/// Parses the manifest of a package in the same way. The display name and the program or script to run are required.
[[nodiscard]] bool ParsePackageManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                                        std::vector<std::wstring>& warnings);

} // namespace scenario_manifest
