#include "front_end/commands/Confirmation.h"

#include <algorithm>

#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/CommandFailure.h"

namespace front_end {

void ConfirmMany(CommandContext& context, const Command& command, const std::wstring& question,
                 const std::vector<ListedJob>& jobs) {
    if (command.isConfirmed || jobs.size() < manyJobs) {
        return;
    }
    const auto answer = context.console.Ask(context.texts.Format(question, {std::to_wstring(jobs.size())}) + L" ");
    if (!answer) {
        return;
    }
    const std::vector<std::wstring> agreeing = NamesInText(context.texts.Get(L"Confirm/Yes"));
    if (std::find(agreeing.begin(), agreeing.end(), *answer) == agreeing.end()) {
        throw CommandFailure{ExitCode::JobFailed, context.texts.Get(L"Confirm/Declined")};
    }
}

} // namespace front_end
