#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostSession.h"

#include <string>
#include <vector>

namespace front_end {

/// Selects jobs by number or id, each once, in the given order. Throws `CommandFailure` if there is no such job.
std::vector<ListedJob> SelectJobs(const CommandContext& context, const std::vector<ListedJob>& jobs,
                                  const std::vector<std::wstring>& names);

/// The jobs of a command: those that it names by number, id, range of numbers ("3-9"), "last" (the newest one) or
/// "failed", each once and in the given order, without names all; and of these those that its filter lets through.
/// Throws `CommandFailure` if a named job or no job of a range exists, `UsageProblem`, and like `HostSession`.
std::vector<ListedJob> JobsOf(const CommandContext& context, HostSession& session, const Command& command);

std::vector<std::wstring> IdsOf(const std::vector<ListedJob>& jobs);

} // namespace front_end
