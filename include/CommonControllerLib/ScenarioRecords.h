#pragma once

#include <string>
#include <vector>

/// One configured root directory to search for scenarios.
struct ScenarioDirectory {
    /// The absolute path.
    std::wstring path;
    /// Prefixed to the names of its scenarios; may be empty.
    std::wstring label;

    /// Compares all members.
    bool operator==(const ScenarioDirectory&) const = default;
};

/// One input file that a scenario takes.
struct InputFileSpec {
    /// The kind of input, such as the name of a CAD system; empty for secondary inputs.
    std::wstring cadName;
    /// The accepted file extensions without the dot; empty for secondary inputs.
    std::vector<std::wstring> extensions;

    /// Compares all members.
    bool operator==(const InputFileSpec&) const = default;
};

/// A scenario that jobs can run.
struct ScenarioInfo {
    /// The key of the catalogue: the decimal form of a 64-bit hash.
    std::wstring id;
    /// The scenario file's path relative to its root directory.
    std::wstring relativePath;
    /// The full path of the scenario file.
    std::wstring path;
    /// The name shown to users: the directory's label, then the scenario's name.
    std::wstring displayName;
    /// The required input files; element 0 is the primary one.
    std::vector<InputFileSpec> inputs;

    /// Compares all members.
    bool operator==(const ScenarioInfo&) const = default;
};

/// One named parameter of a parameter set.
struct ScenarioParameter {
    /// The name in run arguments.
    std::wstring name;
    /// "text", "integer", "number", "boolean" or "choice": selects the control that a front end shows.
    std::wstring type;
    /// The value of a job that names none; text, whatever the type.
    std::wstring defaultValue;
    /// The values to choose from; if empty, any value of the type is allowed.
    std::vector<std::wstring> allowedValues;

    /// Compares all members.
    bool operator==(const ScenarioParameter&) const = default;
};

/// One set of parameters that a scenario offers; the chosen values are passed to the scenario in a job's `runArgument`.
struct ScenarioParameterSetInfo {
    /// The name in run arguments.
    std::wstring id;
    /// The name shown to users.
    std::wstring displayName;
    /// A text for users; may be empty.
    std::wstring description;
    /// The parameters in the order to show them.
    std::vector<ScenarioParameter> parameters;

    /// Compares all members.
    bool operator==(const ScenarioParameterSetInfo&) const = default;
};
