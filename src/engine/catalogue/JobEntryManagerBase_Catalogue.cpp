#include "CommonControllerLib/JobEntryManagerBase.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/catalogue/ScenarioFile.h"
#include "engine/catalogue/ScenarioId.h"
#include "engine/catalogue/ScenarioSearch.h"
#include "engine/catalogue/ScenarioSettings.h"

#include <optional>
#include <utility>

namespace {

std::vector<ScenarioFile> FindScenarioFiles(const std::vector<ScenarioDirectory>& directories) {
    std::vector<ScenarioFile> files;
    for (const ScenarioDirectory& directory : directories) {
        FindScenarioFiles(directory,
                          files); // required by the contract: directories that cannot be searched are skipped
    }
    return files;
}

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

std::optional<ScenarioInfo> Describe(const ScenarioFile& file) {
    std::optional<ScenarioInfo> scenario = file.extension == L".rb" ? DescribeScript(file) : DescribePackage(file);
    if (scenario) {
        const std::wstring prefix = LabelPrefix(file);
        scenario->path = FullPath(file);
        scenario->relativePath = RelativePath(file);
        scenario->id = ScenarioId(prefix + scenario->path);
        scenario->displayName = prefix + scenario->displayName;
    }
    return scenario;
}

} // namespace

bool JobEntryManagerBase::FetchScenarios(std::vector<ScenarioInfo>& scenarios) {
    scenarioDirectories = ControllerCSWrapper::GetScenarioDirectoryList();
    for (const ScenarioFile& file : FindScenarioFiles(scenarioDirectories)) {
        if (auto scenario = Describe(file)) {
            scenarios.push_back(std::move(*scenario));
        }
    }
    for (const ScenarioInfo& scenario : scenarios) {
        scenarioMap[scenario.id] = scenario;
    }
    return false;
}

bool JobEntryManagerBase::FetchScenarioParameterSets(std::vector<ScenarioParameterSetInfo>& parameterSets,
                                                     const std::wstring& scenarioId) {
    const auto scenario = scenarioMap.find(scenarioId);
    if (scenario == scenarioMap.end()) {
        return false;
    }
    // The result is true because the scenario is in the catalogue, even if its parameter sets cannot be read.
    (void)ControllerCSWrapper::GetScenarioParameterSetInfo(scenario->second.path, parameterSets);
    return true;
}
