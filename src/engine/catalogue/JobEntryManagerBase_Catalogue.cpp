#include "CommonControllerLib/JobEntryManagerBase.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "engine/catalogue/ScenarioDescription.h"
#include "engine/catalogue/ScenarioFile.h"
#include "engine/catalogue/ScenarioSearch.h"

#include <utility>

bool JobEntryManagerBase::FetchScenarios(std::vector<ScenarioInfo>& scenarios) {
    scenarioDirectories = ControllerCSWrapper::GetScenarioDirectoryList();
    // A file is described while the system still has its directory at hand.
    const auto append = [&scenarios](const ScenarioFile& file) {
        if (auto scenario = DescribeScenario(file)) {
            scenarios.push_back(std::move(*scenario));
        }
    };
    for (const ScenarioDirectory& directory : scenarioDirectories) {
        VisitScenarioFiles(directory, append); // required by the contract: what cannot be searched is skipped
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
