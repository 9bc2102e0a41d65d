#include "controller_host/ScenarioProblems.h"

#include "engine/catalogue/ScenarioSearch.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/NativePath.h"

#include <cstddef>
#include <set>

namespace {

class ProblemList {
public:
    void Add(std::wstring problem) {
        ++count;
        if (texts.size() < most) {
            texts.push_back(std::move(problem));
        }
    }

    std::vector<std::wstring> Take() {
        if (count > most) {
            texts.push_back(std::to_wstring(count - most) + L" more scenarios or directories are broken.");
        }
        return std::move(texts);
    }

private:
    static constexpr std::size_t most = 100;

    std::vector<std::wstring> texts;
    std::size_t count = 0;
};

std::set<std::wstring> PathsOf(const std::vector<ScenarioInfo>& scenarios) {
    std::set<std::wstring> paths;
    for (const ScenarioInfo& scenario : scenarios) {
        paths.insert(scenario.path);
    }
    return paths;
}

void AddBrokenScenario(const std::wstring& path, const std::set<std::wstring>& listed, ProblemList& problems) {
    if (scenario_manifest::IsPackage(path) && listed.contains(path)) {
        return;
    }
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    if (!scenario_manifest::ReadFor(path, manifest, problem)) {
        problems.Add(std::move(problem));
    }
}

} // namespace

std::vector<std::wstring> FindScenarioProblems(const std::vector<ScenarioDirectory>& directories,
                                               const std::vector<ScenarioInfo>& listed,
                                               const std::vector<std::wstring>& extensions) {
    const std::set<std::wstring> listedPaths = PathsOf(listed);
    ProblemList problems;
    for (const ScenarioDirectory& directory : directories) {
        std::vector<ScenarioFile> files;
        for (const UnreadableDirectory& unreadable : FindScenarioFiles(directory, files, extensions)) {
            problems.Add(L"The scenario directory " + platform::ToNativeText(unreadable.path) +
                         L" cannot be searched: " + unreadable.error.Text() + L".");
        }
        for (const ScenarioFile& file : files) {
            AddBrokenScenario(FullPath(file), listedPaths, problems);
        }
    }
    return problems.Take();
}
