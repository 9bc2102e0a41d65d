#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "engine/catalogue/ScenarioFile.h"
#include "platform/system/Error.h"

#include <string>
#include <vector>

/// A directory that a search could not look into.
struct UnreadableDirectory {
    std::wstring path;
    platform::Error error;
};

/// Appends the scenario files of a root directory and of all directories below it: directory by directory, the upper
/// levels first; in each the ".rb" files, then the ".esa" files, in the order in which the system lists them. A
/// directory that cannot be listed is passed over and returned, the root among them; a link that leads back up its own
/// path is passed over.
CONTROLLER_API std::vector<UnreadableDirectory> FindScenarioFiles(const ScenarioDirectory& directory,
                                                                  std::vector<ScenarioFile>& files);
