#include "controller_host/HostEngine.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/ScenarioProblems.h"
#include "engine/catalogue/ScenarioDescription.h"
#include "engine/catalogue/ScenarioSearch.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

namespace {

/// Sets `problem` if a path is not a scenario file.
[[nodiscard]] bool CheckPath(const std::wstring& path, std::wstring& problem) {
    if (platform::IsDirectory(path)) {
        problem = L"The scenario " + platform::ToNativeText(path) + L" is a folder, not a file.";
        return false;
    }
    if (!platform::Exists(path)) {
        problem = L"The scenario file " + platform::ToNativeText(path) + L" does not exist.";
        return false;
    }
    return true;
}

std::wstring Ambiguity(const std::wstring& name, const std::vector<ScenarioInfo>& scenarios) {
    std::wstring text = L"Several scenarios have the name " + name;
    const wchar_t* separator = L": ";
    for (const ScenarioInfo& scenario : scenarios) {
        text += separator + platform::ToNativeText(scenario.path);
        separator = L", ";
    }
    return text + L". Name one by its path or id.";
}

bool HasSame(const std::vector<std::wstring>& extensions, const std::wstring& extension) {
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const std::wstring& other) { return platform::SameName(extension, other); });
}

/// The extensions with an interpreter whose files the engine does not find itself.
std::vector<std::wstring>
ExtensionsBesideCatalogue(const std::map<std::wstring, std::vector<std::wstring>>& interpreters) {
    std::vector<std::wstring> extensions;
    for (const auto& [extension, command] : interpreters) {
        if (!HasSame(cataloguedExtensions, extension) && !HasSame(extensions, extension)) {
            extensions.push_back(extension);
        }
    }
    return extensions;
}

} // namespace

std::vector<ScenarioInfo> HostEngine::UpdateCatalogue() {
    listedScenarios.clear();
    FetchScenarios(listedScenarios);
    AddScriptsOfOtherLanguages();
    return listedScenarios;
}

void HostEngine::AddScriptsOfOtherLanguages() {
    otherExtensions = ExtensionsBesideCatalogue(settings::Current()->interpreters);
    if (otherExtensions.empty()) {
        return;
    }
    for (const ScenarioDirectory& directory : scenarioDirectories) {
        AddScripts(directory);
    }
}

void HostEngine::AddScripts(const ScenarioDirectory& directory) {
    std::vector<ScenarioFile> files;
    FindScenarioFiles(directory, files, otherExtensions); // ScenarioProblems reports what cannot be searched
    for (const ScenarioFile& file : files) {
        if (const std::optional<ScenarioInfo> scenario = DescribeScenario(file)) {
            scenarioMap[scenario->id] = *scenario;
            listedScenarios.push_back(*scenario);
        }
    }
}

std::vector<std::wstring> HostEngine::ScenarioProblems() const {
    std::vector<std::wstring> extensions = cataloguedExtensions;
    extensions.insert(extensions.end(), otherExtensions.begin(), otherExtensions.end());
    return FindScenarioProblems(scenarioDirectories, listedScenarios, extensions);
}

bool HostEngine::ReadParameterSets(const std::wstring& scenarioId, std::vector<ScenarioParameterSetInfo>& sets,
                                   std::wstring& problem) {
    std::wstring scenario = scenarioId;
    if (!ResolveScenarioName(scenario, problem)) {
        return false;
    }
    const auto catalogued = scenarioMap.find(scenario);
    const std::wstring& path = catalogued == scenarioMap.end() ? scenario : catalogued->second.path;
    scenario_manifest::ScenarioManifest manifest;
    if (!scenario_manifest::ReadFor(path, manifest, problem)) {
        return false;
    }
    sets = std::move(manifest.parameterSets);
    return true;
}

bool HostEngine::ResolveScenarioName(std::wstring& name, std::wstring& problem) {
    if (name.empty()) {
        problem = L"The request names no scenario.";
        return false;
    }
    if (platform::IsAbsolute(name)) {
        return ResolvePath(name, problem);
    }
    if (scenarioMap.contains(name)) {
        return CheckPath(scenarioMap.at(name).path, problem);
    }
    if (FindInDirectories(name)) {
        return true;
    }
    UpdateCatalogue();
    return scenarioMap.contains(name) || FindInDirectories(name) || ResolveFileName(name, problem);
}

bool HostEngine::ResolvePath(std::wstring& path, std::wstring& problem) {
    path = platform::ResolveAgainst(path, path);
    if (!CheckPath(path, problem)) {
        return false;
    }
    UseCataloguedId(path);
    return true;
}

/// Finds a scenario by its path relative to a scenario directory.
bool HostEngine::FindInDirectories(std::wstring& name) {
    std::wstring problem;
    for (const ScenarioDirectory& directory : scenarioDirectories) {
        std::wstring path = platform::ResolveAgainst(directory.path, name);
        if (ResolvePath(path, problem)) {
            name = path;
            return true;
        }
    }
    return false;
}

/// Finds a scenario anywhere below the scenario directories by its file name.
bool HostEngine::ResolveFileName(std::wstring& name, std::wstring& problem) const {
    std::vector<ScenarioInfo> found;
    std::copy_if(
        listedScenarios.begin(), listedScenarios.end(), std::back_inserter(found),
        [&](const ScenarioInfo& scenario) { return platform::SameName(platform::FileName(scenario.path), name); });
    if (found.empty()) {
        problem = L"There is no scenario " + name +
                  L": it is neither an id of a scenario nor a file of the scenario directories.";
        return false;
    }
    if (found.size() > 1) {
        problem = Ambiguity(name, found);
        return false;
    }
    name = found.front().id;
    return true;
}

/// The engine finds catalogued scenarios by id only. A package outside the scenario directories gets its path as id.
void HostEngine::UseCataloguedId(std::wstring& path) {
    const auto listed = std::find_if(listedScenarios.begin(), listedScenarios.end(), [&](const ScenarioInfo& scenario) {
        return platform::SameName(scenario.path, path);
    });
    if (listed != listedScenarios.end()) {
        path = listed->id;
        return;
    }
    scenarioMap.erase(path);
    ScenarioInfo package{path, platform::FileName(path), path, L"", {}};
    if (scenario_manifest::IsPackage(path) && ControllerCSWrapper::GetScenarioInfo(path, package)) {
        scenarioMap[path] = package;
    }
}
