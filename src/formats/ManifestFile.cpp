#include "formats/ManifestFile.h"

#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>

#include "formats/CheckedValue.h"
#include "formats/ManifestRules.h"
#include "formats/json/Reading.h"

namespace scenario_manifest {
namespace {

struct Input {
    CheckedValue<CadName> cadName;
    std::vector<CheckedValue<Extension>> extensions;
};

struct Parameter {
    CheckedValue<Identifier> name;
    CheckedValue<ParameterType> type;
    CheckedValue<ParameterValue> defaultValue;
    std::vector<CheckedValue<ParameterValue>> allowedValues;
};

struct ParameterSet {
    CheckedValue<Identifier> id;
    CheckedValue<DisplayName> displayName;
    CheckedValue<Description> description;
    std::vector<Parameter> parameters;
};

/// The manifest beside a script, as written.
struct ScriptFile {
    CheckedValue<TimeLimit> timeLimitSeconds;
    std::optional<std::vector<std::int32_t>> successExitCodes;
    std::vector<ParameterSet> parameterSets;
};

/// The manifest of a package, as written.
struct PackageFile : ScriptFile {
    CheckedValue<DisplayName> displayName;
    std::vector<Input> inputs;
    std::optional<CheckedValue<FileInPackage>> entryPoint;
    std::optional<CheckedValue<Interpreter>> interpreter;
    std::optional<CheckedValue<FileInPackage>> executable;
};

} // namespace
} // namespace scenario_manifest

namespace json {

template <>
struct Layout<scenario_manifest::Input> {
    using Input = scenario_manifest::Input;
    static constexpr auto members =
        std::make_tuple(Member{"cadName", &Input::cadName}, Member{"extensions", &Input::extensions});
};

template <>
struct Layout<scenario_manifest::Parameter> {
    using Parameter = scenario_manifest::Parameter;
    static constexpr auto members = std::make_tuple(
        Member{"name", &Parameter::name, Presence::Required}, Member{"type", &Parameter::type},
        Member{"defaultValue", &Parameter::defaultValue}, Member{"allowedValues", &Parameter::allowedValues});
};

template <>
struct Layout<scenario_manifest::ParameterSet> {
    using ParameterSet = scenario_manifest::ParameterSet;
    static constexpr auto members = std::make_tuple(
        Member{"id", &ParameterSet::id, Presence::Required}, Member{"displayName", &ParameterSet::displayName},
        Member{"description", &ParameterSet::description}, Member{"parameters", &ParameterSet::parameters});
};

template <typename File>
constexpr auto scriptMembers = std::make_tuple(
    Version(), Member<File, decltype(File::timeLimitSeconds)>{"timeLimitSeconds", &File::timeLimitSeconds},
    Member<File, decltype(File::successExitCodes)>{"successExitCodes", &File::successExitCodes},
    Member<File, decltype(File::parameterSets)>{"parameterSets", &File::parameterSets});

template <>
struct Layout<scenario_manifest::ScriptFile> {
    static constexpr auto members = scriptMembers<scenario_manifest::ScriptFile>;
};

template <>
struct Layout<scenario_manifest::PackageFile> {
    using File = scenario_manifest::PackageFile;
    static constexpr auto members = std::tuple_cat(
        scriptMembers<File>,
        std::make_tuple(Member{"displayName", &File::displayName, Presence::Required}, Member{"inputs", &File::inputs},
                        Member{"entryPoint", &File::entryPoint}, Member{"interpreter", &File::interpreter},
                        Member{"executable", &File::executable}));
};

} // namespace json

namespace scenario_manifest {
namespace {

template <typename Rule>
std::vector<std::wstring> ValuesOf(const std::vector<CheckedValue<Rule>>& checkedValues) {
    std::vector<std::wstring> values;
    values.reserve(checkedValues.size());
    for (const CheckedValue<Rule>& checked : checkedValues) {
        values.push_back(checked.value);
    }
    return values;
}

template <typename Rule>
std::wstring ValueOf(const std::optional<CheckedValue<Rule>>& checked) {
    return checked ? checked->value : std::wstring();
}

ScenarioParameterSetInfo RecordOf(const ParameterSet& set) {
    ScenarioParameterSetInfo record = {set.id.value, set.displayName.value, set.description.value, {}};
    for (const Parameter& parameter : set.parameters) {
        record.parameters.push_back({parameter.name.value, parameter.type.value, parameter.defaultValue.value,
                                     ValuesOf(parameter.allowedValues)});
    }
    return record;
}

ScenarioManifest ManifestOf(const ScriptFile& file) {
    ScenarioManifest manifest;
    manifest.timeLimitSeconds = file.timeLimitSeconds.value;
    if (file.successExitCodes) {
        manifest.successExitCodes = *file.successExitCodes;
    }
    for (const ParameterSet& set : file.parameterSets) {
        manifest.parameterSets.push_back(RecordOf(set));
    }
    return manifest;
}

ScenarioManifest ManifestOf(const PackageFile& file) {
    ScenarioManifest manifest = ManifestOf(static_cast<const ScriptFile&>(file));
    manifest.displayName = file.displayName.value;
    for (const Input& input : file.inputs) {
        manifest.inputs.push_back({input.cadName.value, ValuesOf(input.extensions)});
    }
    manifest.entryPoint = ValueOf(file.entryPoint);
    manifest.interpreter = ValueOf(file.interpreter);
    manifest.executable = ValueOf(file.executable);
    return manifest;
}

template <typename File>
bool Parse(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
           std::vector<std::wstring>& warnings) {
    File file;
    if (!json::Read(json, file, problem, &warnings)) {
        return false;
    }
    ScenarioManifest parsed = ManifestOf(file);
    std::wstring contradiction = FindContradiction(parsed);
    if (contradiction.empty() && std::is_same_v<File, PackageFile>) {
        contradiction = FindWhatCannotRun(parsed);
    }
    if (!contradiction.empty()) {
        problem = std::move(contradiction);
        return false;
    }
    manifest = std::move(parsed);
    return true;
}

} // namespace

bool ParseScriptManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                         std::vector<std::wstring>& warnings) {
    return Parse<ScriptFile>(json, manifest, problem, warnings);
}

bool ParsePackageManifest(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
                          std::vector<std::wstring>& warnings) {
    return Parse<PackageFile>(json, manifest, problem, warnings);
}

} // namespace scenario_manifest
