#include "front_end/jobs/JobConditions.h"

#include <algorithm>

#include "front_end/command_line/NamesInText.h"
#include "front_end/jobs/JobRow.h"
#include "text/Time.h"

namespace front_end {
namespace {

bool Contains(const std::wstring& text, const std::wstring& lowerCasePart) {
    return LowerCase(text).find(lowerCasePart) != std::wstring::npos;
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

std::optional<JobStatus> StatusNamed(const std::wstring& name) {
    const std::wstring wanted = LowerCase(name);
    const auto* const state = std::find_if(namedStates.begin(), namedStates.end(),
                                           [&](JobStatus status) { return LowerCase(StatusName(status)) == wanted; });
    return state == namedStates.end() ? std::nullopt : std::optional(*state);
}

std::wstring LabelOf(const JobListInfo& job) {
    const std::size_t end = job.scenario.displayName.find(L" : ");
    return end == std::wstring::npos ? std::wstring() : job.scenario.displayName.substr(0, end);
}

bool JobConditions::IsEmpty() const {
    return states.empty() && !latest && !earliest && scenario.empty() && labels.empty() && text.empty();
}

bool JobConditions::MatchesScenario(const ListedJob& job) const {
    return scenario.empty() || Contains(job.scenario.displayName, scenario) || LowerCase(job.scenario.id) == scenario;
}

bool JobConditions::MatchesLabel(const ListedJob& job) const {
    return labels.empty() || std::find(labels.begin(), labels.end(), LowerCase(LabelOf(job))) != labels.end();
}

bool JobConditions::MatchesAge(const ListedJob& job) const {
    if (!latest && !earliest) {
        return true;
    }
    const auto time = LastTime(job);
    return time && (!latest || *time <= *latest) && (!earliest || *time >= *earliest);
}

bool JobConditions::Matches(const ListedJob& job) const {
    return (states.empty() || states.contains(job.status)) && MatchesScenario(job) && MatchesLabel(job) &&
           (text.empty() || HasText(job, text)) && MatchesAge(job);
}

} // namespace front_end
