#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// One scenario file that a search has found.
struct ScenarioFile {
    /// ".rb" or ".esa".
    std::wstring extension;
    /// The searched root directory.
    std::wstring root;
    /// The directory below the root; empty for the root itself.
    std::wstring relativeDirectory;
    /// The file's name without its extension.
    std::wstring baseName;
    /// The root's display label; may be empty.
    std::wstring label;
    /// False when the search saw no settings file in the directory, so that none needs to be looked for.
    bool directoryHasSettings = false;
};

CONTROLLER_API std::wstring FullPath(const ScenarioFile& file);

/// The path below the root.
std::wstring RelativePath(const ScenarioFile& file);

/// The ".adc" file that may stand beside the scenario.
std::wstring SettingsPath(const ScenarioFile& file);

/// What stands in front of the scenario's name for the user: the label and " : ", nothing without a label.
std::wstring LabelPrefix(const ScenarioFile& file);
