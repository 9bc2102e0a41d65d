#include "front_end/commands/JobFilter.h"

#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/output/JobTable.h"

namespace front_end {
namespace {

/// Accepts the names of tables and of scripts.
JobStatus StateOf(const CommandContext& context, const std::wstring& name) {
    for (const JobStatus status : namedStates) {
        if (LowerCase(name) == LowerCase(StatusText(context.texts, status))) {
            return status;
        }
    }
    if (const auto status = StatusNamed(name)) {
        return *status;
    }
    throw UsageProblem{L"Usage/JobState", name};
}

std::set<JobStatus> StatesOf(const CommandContext& context, const std::vector<std::wstring>& names) {
    std::set<JobStatus> states;
    for (const std::wstring& name : names) {
        states.insert(StateOf(context, name));
    }
    return states;
}

std::optional<std::int64_t> TimeBefore(const CommandContext& context, const std::wstring& duration) {
    return duration.empty() ? std::nullopt : std::optional(context.now() - DurationOf(duration).value_or(0));
}

std::vector<std::wstring> LabelsOf(const Command& command) {
    return command.label.empty() ? std::vector<std::wstring>() : std::vector{LowerCase(command.label)};
}

} // namespace

JobFilter::JobFilter(const CommandContext& context, const Command& command)
    : JobConditions{StatesOf(context, command.states),
                    TimeBefore(context, command.olderThan),
                    TimeBefore(context, command.newerThan),
                    LowerCase(command.scenarioName),
                    LabelsOf(command),
                    LowerCase(command.searchedText)} {}

} // namespace front_end
