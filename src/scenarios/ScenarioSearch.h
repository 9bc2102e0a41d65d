#pragma once

#include "records/ScenarioRecords.h"
#include "scenarios/ScenarioFile.h"

#include <vector>

/// Appends the scenario files of a root folder and of all folders below it: folder by folder, the upper levels first;
/// in each the ".rb" files, then the ".esa" files, in the order in which the system lists them. A folder that cannot be
/// listed is passed over, and so is a link that leads back up its own path.
void FindScenarioFiles(const ScenarioDirectory& directory, std::vector<ScenarioFile>& files);
