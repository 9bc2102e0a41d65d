#include "CommonControllerLib/JobEntryManagerBase.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/catalogue/ScenarioDescription.h"
#include "engine/catalogue/ScenarioFile.h"
#include "engine/catalogue/ScenarioSearch.h"

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

} // namespace

bool JobEntryManagerBase::FetchScenarios(std::vector<ScenarioInfo>& scenarios) {
    scenarioDirectories = ControllerCSWrapper::GetScenarioDirectoryList();
    const std::vector<ScenarioFile> files = FindScenarioFiles(scenarioDirectories);
    scenarios.reserve(scenarios.size() + files.size());
    for (const ScenarioFile& file : files) {
        if (auto scenario = DescribeScenario(file)) {
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
