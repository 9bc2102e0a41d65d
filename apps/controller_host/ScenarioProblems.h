#pragma once

#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <vector>

/// What keeps scenarios of these directories from being listed, or from running as their descriptions say: for each
/// directory that cannot be searched, broken package and broken description of a script a text that names
/// it and says what is wrong. `listed` are the scenarios that were found there: a package among them is not read again.
/// After 100 problems the rest is counted.
std::vector<std::wstring> FindScenarioProblems(const std::vector<ScenarioDirectory>& directories,
                                               const std::vector<ScenarioInfo>& listed);
