#include "front_end/commands/Problems.h"

#include <set>

#include "front_end/output/DisplayText.h"

namespace front_end {

void WriteProblem(CommandContext& context, const std::wstring& problem) {
    if (!problem.empty()) {
        context.console.WriteError(context.program + L": " + problem + L"\n");
    }
}

void WriteProblems(CommandContext& context, const std::vector<std::wstring>& problems) {
    for (const std::wstring& problem : problems) {
        WriteProblem(context, OneLine(problem));
    }
}

std::wstring UsageHint(const CommandContext& context) {
    return context.texts.Format(L"Usage/Hint", {context.program});
}

std::vector<std::wstring> RefusalReasons(const JobEnqueueResult& result) {
    std::vector<std::wstring> distinct;
    std::set<std::wstring> known;
    for (const std::vector<std::wstring>& reasons : result.inputSetResults) {
        for (const std::wstring& reason : reasons) {
            if (known.insert(reason).second) {
                distinct.push_back(reason);
            }
        }
    }
    return distinct;
}

std::wstring RefusalReason(const JobEnqueueResult& result, std::size_t inputSet) {
    std::wstring reason;
    if (inputSet < result.inputSetResults.size()) {
        for (const std::wstring& text : result.inputSetResults[inputSet]) {
            reason += (reason.empty() ? L"" : L" ") + text;
        }
    }
    return reason;
}

} // namespace front_end
