#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"

#include <cstdint>
#include <optional>
#include <string>

namespace front_end {

/// What the options of `run` say about the start of the jobs. Throws `UsageProblem` for a wrong value.
Scheduling SchedulingOf(const CommandContext& context, const Command& command);

/// A whole number of an option; nothing for one that is not given. Throws `UsageProblem` with this key for a wrong
/// value.
std::optional<std::int32_t> WholeNumberOf(const std::wstring& text, std::int64_t least, std::int64_t most,
                                          const wchar_t* problem);

/// The seconds of an option such as "2h"; nothing for one that is not given. Throws `UsageProblem` for a wrong value.
std::optional<std::int64_t> DurationOf(const std::wstring& text);

/// What the options of `edit` change; without jobs. Throws `UsageProblem` for a wrong value.
JobsEdit EditOf(const CommandContext& context, const Command& command);

} // namespace front_end
