#include "engine/catalogue/ScenarioDescription.h"

#include "CommonControllerLib/PathFuncs.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/catalogue/ScenarioId.h"
#include "engine/catalogue/ScenarioSettings.h"

namespace {

constexpr const wchar_t* packageExtension = L".esa";

/// Describes a script: one input, unless its settings file says otherwise.
ScenarioInfo DescribeScript(const ScenarioFile& file) {
    ScenarioInfo scenario;
    scenario.displayName = file.baseName;
    scenario.inputs = file.hasSettings ? ReadScenarioInputs(SettingsPath(file)) : std::vector<InputFileSpec>(1);
    return scenario;
}

/// Describes a package; returns nothing if it is invalid.
std::optional<ScenarioInfo> DescribePackage(const ScenarioFile& file) {
    ScenarioInfo scenario;
    if (!ControllerCSWrapper::GetScenarioInfo(FullPath(file), scenario)) {
        return std::nullopt;
    }
    return scenario;
}

} // namespace

std::optional<ScenarioInfo> DescribeScenario(const ScenarioFile& file) {
    std::optional<ScenarioInfo> scenario =
        file.extension == packageExtension ? DescribePackage(file) : DescribeScript(file);
    if (scenario) {
        const std::wstring prefix = LabelPrefix(file);
        scenario->relativePath = RelativePath(file);
        scenario->path = PathFuncs::Join(file.root, scenario->relativePath);
        scenario->id = ScenarioId(prefix + scenario->path);
        scenario->displayName.insert(0, prefix);
    }
    return scenario;
}
