#pragma once

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/ScenarioRecords.h"
#include "engine/catalogue/ScenarioFile.h"
#include "platform/system/Error.h"

#include <functional>
#include <string>
#include <vector>

/// A directory that a search could not list.
struct UnreadableDirectory {
    std::wstring path;
    platform::Error error;
};

/// The extensions of the files in the engine's own catalogue: scripts in Ruby, and packages.
inline const std::vector<std::wstring> cataloguedExtensions{L".rb", L".esa"};

/// Called with a scenario file, which is valid until the call returns.
using ScenarioFileVisitor = std::function<void(const ScenarioFile& file)>;

/// Visits the scenario files of a root directory and all its subdirectories, breadth first; within a directory those
/// with the first extension, then those with the next one, in the order of the system's listing. The files of a
/// directory are visited before the next one is listed. Skips links that lead back to a parent directory. Returns the
/// directories, possibly including the root, that could not be listed and were skipped.
CONTROLLER_API std::vector<UnreadableDirectory>
VisitScenarioFiles(const ScenarioDirectory& directory, const ScenarioFileVisitor& visit,
                   const std::vector<std::wstring>& extensions = cataloguedExtensions);

/// Same as `VisitScenarioFiles`, and appends the files.
CONTROLLER_API std::vector<UnreadableDirectory>
FindScenarioFiles(const ScenarioDirectory& directory, std::vector<ScenarioFile>& files,
                  const std::vector<std::wstring>& extensions = cataloguedExtensions);
