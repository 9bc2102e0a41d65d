#include "controller_cli/commands/Problems.h"

#include <set>

#include "controller_cli/output/DisplayText.h"

namespace controller_cli {

void WriteProblem(CommandContext& context, const std::wstring& problem) {
    if (!problem.empty()) {
        context.console.WriteError(L"controller_cli: " + problem + L"\n");
    }
}

void WriteProblems(CommandContext& context, const std::vector<std::wstring>& problems) {
    for (const std::wstring& problem : problems) {
        WriteProblem(context, OneLine(problem));
    }
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

} // namespace controller_cli
