#include "controller_cli/RefusalReason.h"

#include <algorithm>

#include "controller_cli/LogHint.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace controller_cli {
namespace {

/// Empty when all is well with the files.
std::wstring InputProblem(const CommandContext& context, const std::vector<std::wstring>& inputSet) {
    if (inputSet.empty()) {
        return context.texts.Get(L"Refusals/EmptyInputSet");
    }
    const auto missing = std::find_if_not(inputSet.begin(), inputSet.end(), platform::Exists);
    return missing == inputSet.end()
               ? L""
               : context.texts.Format(L"Refusals/NoSuchInput", {platform::ToNativeText(*missing)});
}

/// Empty when the request names all that every job of it needs.
std::wstring RequestProblem(const CommandContext& context, const EnqueueJobsInfo& request) {
    if (request.inputFileSets.empty()) {
        return context.texts.Get(L"Refusals/NoInputSets");
    }
    if (request.scenario.id.empty()) {
        return context.texts.Get(L"Refusals/NoScenario");
    }
    return request.outputDir.empty() ? context.texts.Get(L"Refusals/NoOutputFolder") : L"";
}

} // namespace

std::wstring RefusalReason(const CommandContext& context, const Refusal& refusal) {
    const EnqueueJobsInfo& request = refusal.request;
    std::wstring reason = RequestProblem(context, request);
    if (reason.empty() && refusal.inputSet && *refusal.inputSet < request.inputFileSets.size()) {
        reason = InputProblem(context, request.inputFileSets[*refusal.inputSet]);
    }
    if (reason.empty() && refusal.isWhole && !platform::Exists(request.scenario.id)) {
        reason = context.texts.Format(L"Refusals/NoSuchScenario", {platform::ToNativeText(request.scenario.id)});
    }
    return reason.empty() ? context.texts.Get(L"Refusals/Unknown") + LogHint(context) : reason;
}

} // namespace controller_cli
