#include <algorithm>
#include <map>
#include <set>

#include "cadjobs/completion/Candidates.h"
#include "formats/JobStates.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobTable.h"
#include "platform/files/NativePath.h"

namespace front_end {
namespace {

/// True if the subcommand can do something with a job in this state.
bool Suits(const SubcommandSpec* subcommand, JobStatus status) {
    switch (subcommand == nullptr ? CommandKind::List : subcommand->kind) {
    case CommandKind::Cancel:
        return !IsOver(status);
    case CommandKind::Edit:
    case CommandKind::Hold:
    case CommandKind::Release:
        return status == JobStatus::Queued;
    case CommandKind::Delete:
        return !IsActive(status);
    case CommandKind::Again:
        return IsOver(status);
    default:
        return true;
    }
}

/// The newest first; the values of options have no names of groups.
std::vector<Candidate> JobCandidates(const Texts& texts, std::vector<ListedJob> jobs, const CompletionPoint& point) {
    std::stable_sort(jobs.begin(), jobs.end(),
                     [](const ListedJob& left, const ListedJob& right) { return left.seqId > right.seqId; });
    std::vector<Candidate> candidates;
    for (const ListedJob& job : jobs) {
        if (point.place != CompletionPoint::Place::Operand || Suits(point.subcommand, job.status)) {
            candidates.push_back({std::to_wstring(job.seqId), job.scenario.displayName + L", " + InputText(job) +
                                                                  L": " + StatusText(texts, job.status)});
        }
    }
    if (point.place == CompletionPoint::Place::Operand && !candidates.empty()) {
        candidates.push_back({L"last", texts.Get(L"Completion/Last")});
        candidates.push_back({L"failed", texts.Get(L"Completion/Failed")});
    }
    return candidates;
}

std::vector<Candidate> NamesOf(const std::vector<ScenarioInfo>& scenarios) {
    std::vector<Candidate> candidates;
    candidates.reserve(scenarios.size());
    for (const ScenarioInfo& scenario : scenarios) {
        candidates.push_back({scenario.displayName, platform::ToNativeText(scenario.path)});
    }
    return candidates;
}

std::vector<Candidate> IdsOf(const std::vector<ScenarioInfo>& scenarios) {
    std::vector<Candidate> candidates;
    candidates.reserve(scenarios.size());
    for (const ScenarioInfo& scenario : scenarios) {
        candidates.push_back({scenario.id, scenario.displayName});
    }
    return candidates;
}

/// By file name, or by id where several files have one name.
std::vector<Candidate> FilesOf(const std::vector<ScenarioInfo>& scenarios) {
    std::map<std::wstring, int> count;
    for (const ScenarioInfo& scenario : scenarios) {
        ++count[platform::FileName(scenario.path)];
    }
    std::vector<Candidate> candidates;
    for (const ScenarioInfo& scenario : scenarios) {
        const std::wstring name = platform::FileName(scenario.path);
        candidates.push_back({count[name] == 1 ? name : scenario.id, scenario.displayName});
    }
    return candidates;
}

std::vector<Candidate> ScenarioCandidates(const std::vector<ScenarioInfo>& scenarios, const CompletionPoint& point) {
    if (point.place == CompletionPoint::Place::OptionValue) {
        return NamesOf(scenarios);
    }
    return point.subcommand->kind == CommandKind::ParameterSets ? IdsOf(scenarios) : FilesOf(scenarios);
}

/// The parameter sets of the scenario that the command line names; empty without one.
std::vector<ScenarioParameterSetInfo> SetsOf(HostSession& session, const CompletionPoint& point) {
    if (point.operands.empty()) {
        return {};
    }
    const std::wstring& name = point.operands.front();
    for (const ScenarioInfo& scenario : session.FetchScenarios()) {
        if (name == scenario.id || name == platform::ToNativeText(scenario.path) ||
            name == platform::FileName(scenario.path)) {
            return session.FetchParameterSets(scenario.id);
        }
    }
    return {};
}

/// "size=400" for each allowed value, or else for the default one.
void AddValues(const ScenarioParameterSetInfo& set, const std::wstring& before, std::vector<Candidate>& candidates) {
    for (const ScenarioParameter& parameter : set.parameters) {
        std::vector<std::wstring> values = parameter.allowedValues;
        if (values.empty()) {
            values.push_back(parameter.defaultValue);
        }
        for (const std::wstring& value : values) {
            std::wstring text = before;
            text.append(parameter.name).append(L"=").append(value);
            candidates.push_back({text, set.displayName});
        }
    }
}

/// An argument begins with the id of a set, whose default values can be changed after it.
std::vector<Candidate> ParameterCandidates(const std::vector<ScenarioParameterSetInfo>& sets,
                                           const std::wstring& typed) {
    std::vector<Candidate> candidates;
    const std::size_t blank = typed.rfind(L' ');
    const std::wstring before = blank == std::wstring::npos ? std::wstring() : typed.substr(0, blank + 1);
    const std::wstring first = typed.substr(0, typed.find(L' '));
    const auto named =
        std::find_if(sets.begin(), sets.end(), [&](const ScenarioParameterSetInfo& set) { return set.id == first; });
    for (const ScenarioParameterSetInfo& set : sets) {
        if (before.empty()) {
            candidates.push_back({set.id, set.displayName});
        }
    }
    if (!sets.empty()) {
        AddValues(named == sets.end() || before.empty() ? sets.front() : *named, before, candidates);
    }
    return candidates;
}

} // namespace

std::vector<Candidate> HostCandidates(CommandContext& context, const CompletionPoint& point) {
    HostSession session(context, Start::Never);
    switch (point.kind) {
    case ValueKind::Jobs:
        return JobCandidates(context.texts, session.FetchJobs(), point);
    case ValueKind::Scenario:
        return ScenarioCandidates(session.FetchScenarios(), point);
    case ValueKind::Parameter:
        return ParameterCandidates(SetsOf(session, point), point.typed);
    default:
        return {};
    }
}

} // namespace front_end
