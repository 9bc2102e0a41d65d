#include "controller_host/EnqueueWithReasons.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "engine/OutputDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

#include <algorithm>

namespace {

using Texts = std::vector<std::wstring>;

constexpr auto unexplained = L"The engine has refused it; the log of the host says more.";

[[nodiscard]] bool Resolve(HostEngine& engine, ScheduledRequest& request, std::wstring& problem) {
    if (request.inputFileSets.empty()) {
        problem = L"The request names no input files.";
        return false;
    }
    if (request.outputDir.empty()) {
        problem = L"The request names no output directory.";
        return false;
    }
    if (!engine.ResolveScenarioName(request.scenario.id, problem)) {
        return false;
    }
    engine.AddNeedsOfScenario(request);
    return engine.ResolveScheduling(request, problem);
}

/// True for a name that is not a separate directory within the output directory: an empty name, "." and "..", on
/// Windows also with trailing blanks and dots.
bool IsNoDirectoryName(const std::wstring& name) {
    return name.find_first_not_of(L". ") == std::wstring::npos;
}

std::wstring ProblemOf(const Texts& inputSet) {
    if (inputSet.empty()) {
        return L"The input set names no file.";
    }
    const auto missing = std::find_if_not(inputSet.begin(), inputSet.end(), platform::Exists);
    if (missing != inputSet.end()) {
        return L"The input file " + platform::ToNativeText(*missing) + L" does not exist.";
    }
    if (IsNoDirectoryName(OutputDirectoryName(inputSet.front()))) {
        return L"The input " + platform::ToNativeText(inputSet.front()) +
               L" cannot be the first of a job: the job's output folder bears its name without extension, of which "
               L"nothing is left. Rename it, or put another file before it.";
    }
    return {};
}

JobEnqueueResult RefusedResult(const EnqueueJobsInfo& request, const std::wstring& problem) {
    ControllerLogManager::ErrorLog(L"EnqueueJobs is refused: " + problem);
    JobEnqueueResult result;
    result.requestId = request.requestId;
    result.jobIds.resize(request.inputFileSets.size());
    result.inputSetResults.assign(std::max(result.jobIds.size(), std::size_t{1}), {problem});
    return result;
}

/// Returns the problem of each input set. A set with a problem is emptied; the engine skips empty sets.
Texts EmptyUnusableSets(EnqueueJobsInfo& request) {
    Texts problems;
    for (Texts& inputSet : request.inputFileSets) {
        problems.push_back(ProblemOf(inputSet));
        if (!problems.back().empty()) {
            ControllerLogManager::ErrorLog(problems.back());
            inputSet.clear();
        }
    }
    return problems;
}

} // namespace

JobEnqueueResult EnqueueWithReasons(HostEngine& engine, ScheduledRequest& request) {
    if (std::wstring problem; !Resolve(engine, request, problem)) {
        return RefusedResult(request, problem);
    }
    const Texts problems = EmptyUnusableSets(request);
    JobEnqueueResult result;
    if (!engine.EnqueueJob(request, result)) {
        return RefusedResult(request, unexplained);
    }
    for (std::size_t i = 0; i < problems.size(); ++i) {
        if (result.jobIds[i].id.empty()) {
            result.inputSetResults[i] = {problems[i].empty() ? unexplained : problems[i]};
        }
    }
    return result;
}
