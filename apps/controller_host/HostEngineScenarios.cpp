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

/// Why a path is not a scenario file; empty if it is.
std::wstring ProblemOf(const std::wstring& path) {
    if (platform::IsDirectory(path)) {
        return L"The scenario " + platform::ToNativeText(path) + L" is a folder, not a file.";
    }
    return platform::Exists(path) ? L"" : L"The scenario file " + platform::ToNativeText(path) + L" does not exist.";
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

std::wstring HostEngine::ReadParameterSets(const std::wstring& scenarioId,
                                           std::vector<ScenarioParameterSetInfo>& sets) {
    std::wstring scenario = scenarioId;
    std::wstring problem = ResolveScenarioName(scenario);
    if (!problem.empty()) {
        return problem;
    }
    const auto catalogued = scenarioMap.find(scenario);
    const std::wstring& path = catalogued == scenarioMap.end() ? scenario : catalogued->second.path;
    scenario_manifest::ScenarioManifest manifest;
    if (scenario_manifest::ReadFor(path, manifest, problem)) {
        sets = std::move(manifest.parameterSets);
    }
    return problem;
}

std::wstring HostEngine::ResolveScenarioName(std::wstring& name) {
    if (name.empty()) {
        return L"The request names no scenario.";
    }
    if (platform::IsAbsolute(name)) {
        return ResolvePath(name);
    }
    if (scenarioMap.contains(name)) {
        return ProblemOf(scenarioMap.at(name).path);
    }
    if (FindInDirectories(name)) {
        return {};
    }
    UpdateCatalogue();
    return scenarioMap.contains(name) || FindInDirectories(name) ? L"" : ResolveFileName(name);
}

std::wstring HostEngine::ResolvePath(std::wstring& path) {
    path = platform::ResolveAgainst(path, path);
    std::wstring problem = ProblemOf(path);
    if (problem.empty()) {
        UseCataloguedId(path);
    }
    return problem;
}

/// Finds a scenario by its path relative to a scenario directory.
bool HostEngine::FindInDirectories(std::wstring& name) {
    for (const ScenarioDirectory& directory : scenarioDirectories) {
        std::wstring path = platform::ResolveAgainst(directory.path, name);
        if (ResolvePath(path).empty()) {
            name = path;
            return true;
        }
    }
    return false;
}

/// Finds a scenario anywhere below the scenario directories by its file name.
std::wstring HostEngine::ResolveFileName(std::wstring& name) const {
    std::vector<ScenarioInfo> found;
    std::copy_if(
        listedScenarios.begin(), listedScenarios.end(), std::back_inserter(found),
        [&](const ScenarioInfo& scenario) { return platform::SameName(platform::FileName(scenario.path), name); });
    if (found.empty()) {
        return L"There is no scenario " + name +
               L": it is neither an id of a scenario nor a file of the scenario directories.";
    }
    if (found.size() > 1) {
        return Ambiguity(name, found);
    }
    name = found.front().id;
    return {};
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
