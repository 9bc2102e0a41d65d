#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// One scenario file that a search has found.
struct ScenarioFile {
    /// ".rb" or ".esa".
    std::wstring extension;
    /// The searched root folder.
    std::wstring root;
    /// The folder below the root; empty for the root itself.
    std::wstring relativeFolder;
    /// The file's name without its extension.
    std::wstring baseName;
    /// The root's display label; may be empty.
    std::wstring label;
    /// False when the search saw no settings file in the folder, so that none needs to be looked for.
    bool folderHasSettings = false;
};

CONTROLLER_API std::wstring FullPath(const ScenarioFile& file);

/// The path below the root.
std::wstring RelativePath(const ScenarioFile& file);

/// The ".adc" file that may stand beside the scenario.
std::wstring SettingsPath(const ScenarioFile& file);

/// What stands in front of the scenario's name for the user: the label and " : ", nothing without a label.
std::wstring LabelPrefix(const ScenarioFile& file);
