#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "engine/catalogue/ScenarioFile.h"
#include "platform/system/Error.h"

#include <string>
#include <vector>

/// A folder that a search could not look into.
struct UnreadableFolder {
    std::wstring path;
    platform::Error error;
};

/// Appends the scenario files of a root folder and of all folders below it: folder by folder, the upper levels first;
/// in each the ".rb" files, then the ".esa" files, in the order in which the system lists them. A folder that cannot be
/// listed is passed over and returned, the root among them; a link that leads back up its own path is passed over.
CONTROLLER_API std::vector<UnreadableFolder> FindScenarioFiles(const ScenarioDirectory& directory,
                                                               std::vector<ScenarioFile>& files);
