#include "front_end/commands/JobFilter.h"

#include <algorithm>
#include <array>

#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/JobTable.h"
#include "text/Time.h"

namespace front_end {
namespace {

constexpr std::array allStates = {JobStatus::Queued,   JobStatus::Running,   JobStatus::Success, JobStatus::Failed,
                                  JobStatus::Dequeued, JobStatus::Canceling, JobStatus::Canceled};

bool Contains(const std::wstring& text, const std::wstring& lowerCasePart) {
    return LowerCase(text).find(lowerCasePart) != std::wstring::npos;
}

/// Accepts the names of tables and of scripts.
std::set<JobStatus> StatesOf(const CommandContext& context, const std::vector<std::wstring>& names) {
    std::set<JobStatus> states;
    for (const std::wstring& name : names) {
        const auto* const state = std::find_if(allStates.begin(), allStates.end(), [&](JobStatus status) {
            return LowerCase(name) == LowerCase(StatusText(context.texts, status)) ||
                   LowerCase(name) == LowerCase(StatusName(status));
        });
        if (state == allStates.end()) {
            throw UsageProblem{L"Usage/JobState", name};
        }
        states.insert(*state);
    }
    return states;
}

std::optional<std::int64_t> TimeBefore(const CommandContext& context, const std::wstring& duration) {
    return duration.empty() ? std::nullopt : std::optional(context.now() - DurationOf(duration).value_or(0));
}

/// Units: seconds since 1970-01-01 UTC. Nothing if it is not known: a job that has not ended, or was cancelled before
/// it ran, has only the time at which it was enqueued.
std::optional<std::int64_t> LastTime(const ListedJob& job) {
    if (const auto end = text::ReadUtcTime(job.endTime)) {
        return end;
    }
    return job.queuedTime == 0 ? std::nullopt : std::optional(job.queuedTime);
}

bool HasText(const ListedJob& job, const std::wstring& lowerCasePart) {
    return Contains(job.scenario.displayName, lowerCasePart) || Contains(job.runArgument, lowerCasePart) ||
           Contains(job.outputDir, lowerCasePart) ||
           std::any_of(job.inputFiles.begin(), job.inputFiles.end(),
                       [&](const std::wstring& file) { return Contains(file, lowerCasePart); });
}

} // namespace

JobFilter::JobFilter(const CommandContext& context, const Command& command)
    : states(StatesOf(context, command.states)), latest(TimeBefore(context, command.olderThan)),
      earliest(TimeBefore(context, command.newerThan)), scenario(LowerCase(command.scenarioName)),
      label(LowerCase(command.label)), text(LowerCase(command.searchedText)) {}

bool JobFilter::IsEmpty() const {
    return states.empty() && !latest && !earliest && scenario.empty() && label.empty() && text.empty();
}

bool JobFilter::MatchesAge(const ListedJob& job) const {
    const auto time = LastTime(job);
    return (!latest || (time && *time <= *latest)) && (!earliest || (time && *time >= *earliest));
}

bool JobFilter::Matches(const ListedJob& job) const {
    const bool isScenario =
        scenario.empty() || Contains(job.scenario.displayName, scenario) || LowerCase(job.scenario.id) == scenario;
    return (states.empty() || states.contains(job.status)) && isScenario &&
           (label.empty() || LowerCase(LabelOf(job)) == label) && (text.empty() || HasText(job, text)) &&
           MatchesAge(job);
}

bool HasFilter(const Command& command) {
    return !(command.states.empty() && command.olderThan.empty() && command.newerThan.empty() &&
             command.scenarioName.empty() && command.label.empty() && command.searchedText.empty());
}

std::wstring LabelOf(const JobListInfo& job) {
    const std::size_t end = job.scenario.displayName.find(L" : ");
    return end == std::wstring::npos ? std::wstring() : job.scenario.displayName.substr(0, end);
}

} // namespace front_end
