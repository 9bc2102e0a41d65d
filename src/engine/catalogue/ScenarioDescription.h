#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "engine/catalogue/ScenarioFile.h"

#include <optional>

/// Describes a scenario file as the catalogue does: a package (".esa") by its manifest, any other file as a script, by
/// the settings file that the search found beside it. Returns nothing for an invalid package.
CONTROLLER_API std::optional<ScenarioInfo> DescribeScenario(const ScenarioFile& file);
