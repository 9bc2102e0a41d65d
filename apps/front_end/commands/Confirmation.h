#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"

#include <vector>

namespace front_end {

/// Jobs are many from this number on.
inline constexpr std::size_t manyJobs = 6;

/// Asks the user on a terminal before many jobs are cancelled or deleted, unless the command confirms it (`--yes`).
/// `question` is the key of a text with the number of jobs. Throws `CommandFailure` if the user does not agree. Without
/// a terminal nobody is asked.
void ConfirmMany(CommandContext& context, const Command& command, const std::wstring& question,
                 const std::vector<ListedJob>& jobs);

} // namespace front_end
