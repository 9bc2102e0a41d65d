#include "formats/ManifestFile.h"

#include <tuple>
#include <utility>

#include "formats/ManifestRules.h"
#include "formats/json/Reading.h"
#include "formats/json/SchedulingLayouts.h"

namespace scenario_manifest {
namespace {

using json::Member;
using json::Presence;
using json::rule;

struct InputMembers {
    static constexpr auto members = std::make_tuple(Member{"cadName", &InputFileSpec::cadName, rule<CadName>},
                                                    Member{"extensions", &InputFileSpec::extensions, rule<Extension>});
};

struct ParameterMembers {
    using Parameter = ScenarioParameter;
    static constexpr auto members =
        std::make_tuple(Member{"name", &Parameter::name, rule<Identifier>, Presence::Required},
                        Member{"type", &Parameter::type, rule<ParameterType>},
                        Member{"defaultValue", &Parameter::defaultValue, rule<ParameterValue>},
                        Member{"allowedValues", &Parameter::allowedValues, rule<ParameterValue>});
};

struct ParameterSetMembers {
    using Set = ScenarioParameterSetInfo;
    static constexpr auto members = std::make_tuple(Member{"id", &Set::id, rule<Identifier>, Presence::Required},
                                                    Member{"displayName", &Set::displayName, rule<DisplayName>},
                                                    Member{"description", &Set::description, rule<Description>},
                                                    Member{"parameters", &Set::parameters, rule<ParameterMembers>});
};

/// The file beside a script.
struct ScriptFile {
    using Manifest = ScenarioManifest;
    static constexpr auto members =
        std::make_tuple(json::Version(), Member{"timeLimitSeconds", &Manifest::timeLimitSeconds, rule<TimeLimit>},
                        Member{"successExitCodes", &Manifest::successExitCodes},
                        json::OptionalMember{"needs", &Manifest::needs, rule<json::NeedRule>},
                        Member{"parameterSets", &Manifest::parameterSets, rule<ParameterSetMembers>},
                        Member{"slurm", &Manifest::slurm, rule<slurm::SlurmMembers>});
};

/// The manifest of a package.
struct PackageFile {
    using Manifest = ScenarioManifest;
    static constexpr auto members = std::tuple_cat(
        ScriptFile::members,
        std::make_tuple(Member{"displayName", &Manifest::displayName, rule<DisplayName>, Presence::Required},
                        Member{"inputs", &Manifest::inputs, rule<InputMembers>},
                        Member{"entryPoint", &Manifest::entryPoint, rule<FileInPackage>},
                        Member{"interpreter", &Manifest::interpreter, rule<Interpreter>},
                        Member{"executable", &Manifest::executable, rule<FileInPackage>}));
};

/// A parameter without a type is a text.
void SetDefaultTypes(ScenarioManifest& manifest) {
    for (ScenarioParameterSetInfo& set : manifest.parameterSets) {
        for (ScenarioParameter& parameter : set.parameters) {
            if (parameter.type.empty()) {
                parameter.type = L"text";
            }
        }
    }
}

template <typename File>
bool Parse(const std::string& json, ScenarioManifest& manifest, std::wstring& problem,
           std::vector<std::wstring>& warnings) {
    ScenarioManifest parsed;
    if (!json::Read<File>(json, parsed, problem, &warnings)) {
        return false;
    }
    SetDefaultTypes(parsed);
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
