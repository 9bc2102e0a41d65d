#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <utility>

#include "formats/Boundary.h"
#include "formats/ScenarioManifest.h"

namespace {

using scenario_manifest::ScenarioManifest;

/// The warning is the only way in which the scenario's author learns the error, because callers skip an invalid
/// scenario.
bool ReadOrWarn(const std::wstring& path, ScenarioManifest& manifest) {
    std::wstring problem;
    const bool isRead = scenario_manifest::ReadFor(path, manifest, problem);
    if (!isRead) {
        ControllerCSWrapper::WriteWarnLog(L"A scenario is not usable: " + problem);
    }
    return isRead;
}

} // namespace

bool ControllerCSWrapper::GetScenarioInfo(const std::wstring& path, ScenarioInfo& info) {
    return boundary::Guard("GetScenarioInfo", [&] {
        ScenarioManifest manifest;
        if (!ReadOrWarn(path, manifest)) {
            return false;
        }
        info.displayName = std::move(manifest.displayName);
        info.inputs = std::move(manifest.inputs);
        return true;
    });
}

bool ControllerCSWrapper::GetScenarioParameterSetInfo(const std::wstring& scenarioPath,
                                                      std::vector<ScenarioParameterSetInfo>& out) {
    return boundary::Guard("GetScenarioParameterSetInfo", [&] {
        ScenarioManifest manifest;
        if (!ReadOrWarn(scenarioPath, manifest)) {
            return false;
        }
        out.insert(out.end(), manifest.parameterSets.begin(), manifest.parameterSets.end());
        return true;
    });
}
