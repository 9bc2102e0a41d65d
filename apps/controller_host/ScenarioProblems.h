#pragma once

#include "CommonControllerLib/ScenarioRecords.h"

#include <string>
#include <vector>

/// Finds the reasons why scenarios in these directories are not listed, or do not run as described: directories that
/// cannot be searched, broken packages and broken descriptions of scripts. Each text names the file and the problem.
/// `listed` are the scenarios found there, and `extensions` those of their files; packages among them are not read
/// again. After 100 problems the rest is only counted.
std::vector<std::wstring> FindScenarioProblems(const std::vector<ScenarioDirectory>& directories,
                                               const std::vector<ScenarioInfo>& listed,
                                               const std::vector<std::wstring>& extensions);
