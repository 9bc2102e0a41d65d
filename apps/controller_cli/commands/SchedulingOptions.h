#pragma once

#include "controller_cli/command_line/LongOptions.h"
#include "controller_cli/commands/CommandContext.h"
#include "formats/Scheduling.h"

#include <cstdint>
#include <string>

namespace controller_cli {

/// What the options of `--run` say about the start of the jobs. Throws `UsageProblem` for a wrong value.
Scheduling SchedulingOf(const CommandContext& context, const LongCommand& command);

/// The seconds of an option such as "2h"; 0 for one that is not given. Throws `UsageProblem` for a wrong value.
std::int64_t DurationOf(const std::wstring& text);

/// What the options of `--edit` change; without jobs. Throws `UsageProblem` for a wrong value.
JobsEdit EditOf(const CommandContext& context, const LongCommand& command);

} // namespace controller_cli
