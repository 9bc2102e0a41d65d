#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// One scenario file found by a search.
struct ScenarioFile {
    /// With the dot.
    std::wstring extension;
    /// The searched root directory.
    std::wstring root;
    /// The directory relative to the root; empty for the root itself.
    std::wstring relativeDirectory;
    /// The file's name without its extension.
    std::wstring baseName;
    /// The root's display label; may be empty.
    std::wstring label;
    /// True if the search found its settings file, which may have become unreadable since.
    bool hasSettings = false;
};

CONTROLLER_API std::wstring FullPath(const ScenarioFile& file);

/// The path relative to the root.
std::wstring RelativePath(const ScenarioFile& file);

/// The path of the optional ".adc" file beside the scenario.
std::wstring SettingsPath(const ScenarioFile& file);

/// The prefix of the scenario's display name: the label and " : "; empty without a label.
std::wstring LabelPrefix(const ScenarioFile& file);
