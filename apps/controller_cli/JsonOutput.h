#pragma once

#include "CommonControllerLib/ScenarioRecords.h"
#include "controller_cli/JobRow.h"

#include <string>
#include <vector>

/// What `--json` prints: one JSON object a line, each with the version of its layout. Its names stay, whatever the
/// language.
namespace controller_cli {

std::wstring JobsJson(const std::vector<JobRow>& jobs);
std::wstring ScenariosJson(const std::vector<ScenarioInfo>& scenarios);
std::wstring ParameterSetsJson(const std::vector<ScenarioParameterSetInfo>& parameterSets);

} // namespace controller_cli
