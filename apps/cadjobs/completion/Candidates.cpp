#include "cadjobs/completion/Candidates.h"

#include <algorithm>
#include <chrono>
#include <exception>

#include "formats/JobStates.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/JobColumns.h"
#include "front_end/output/JobTable.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace front_end {
namespace {

/// A user waits for candidates with a finger on the key.
constexpr std::chrono::milliseconds longestWait{1000};
constexpr std::size_t mostCandidates = 500;

std::vector<Candidate> SubcommandCandidates(const Texts& texts, const std::wstring& group) {
    std::vector<Candidate> candidates;
    for (const SubcommandSpec& spec : Subcommands()) {
        const std::wstring name = text::FromUtf8(spec.name);
        const std::size_t blank = name.find(L' ');
        const bool isInGroup = blank != std::wstring::npos && name.substr(0, blank) == group;
        if (spec.IsHidden() || (!group.empty() && !isInGroup)) {
            continue;
        }
        const std::wstring word = group.empty() ? name.substr(0, blank) : name.substr(blank + 1);
        const std::wstring key = group.empty() ? word : spec.Key();
        if (candidates.empty() || candidates.back().value != word) {
            candidates.push_back({word, texts.Get(L"Subcommands/" + key)});
        }
    }
    return candidates;
}

std::vector<Candidate> OptionCandidates(const Texts& texts, const CompletionPoint& point) {
    std::vector<Candidate> candidates;
    for (const char* const name : point.Options()) {
        const std::wstring wide = text::FromUtf8(name);
        candidates.push_back({wide, texts.Get(L"Options/" + wide.substr(2))});
    }
    candidates.push_back({L"--help", texts.Get(L"Options/help")});
    if (point.subcommand == nullptr) {
        candidates.push_back({L"--version", texts.Get(L"Options/version")});
    }
    return candidates;
}

std::vector<Candidate> Words(std::initializer_list<const wchar_t*> words) {
    std::vector<Candidate> candidates;
    for (const wchar_t* const word : words) {
        candidates.push_back({word, {}});
    }
    return candidates;
}

std::vector<Candidate> StateCandidates(const Texts& texts) {
    std::vector<Candidate> candidates;
    for (const JobStatus status : {JobStatus::Queued, JobStatus::Running, JobStatus::Success, JobStatus::Failed,
                                   JobStatus::Dequeued, JobStatus::Canceling, JobStatus::Canceled}) {
        candidates.push_back({StatusName(status), StatusText(texts, status)});
    }
    return candidates;
}

std::vector<Candidate> ColumnCandidates(const Texts& texts, ValueKind kind) {
    std::vector<Candidate> candidates;
    for (const JobColumn& column : AllJobColumns()) {
        const bool isOffered = kind == ValueKind::Column || (kind == ValueKind::SortColumn && column.precedes) ||
                               (kind == ValueKind::GroupColumn && column.groupText);
        if (isOffered) {
            candidates.push_back({column.name, texts.Get(column.textKey)});
        }
    }
    return candidates;
}

std::vector<Candidate> ValueCandidates(const Texts& texts, ValueKind kind) {
    switch (kind) {
    case ValueKind::States:
        return StateCandidates(texts);
    case ValueKind::Column:
    case ValueKind::SortColumn:
    case ValueKind::GroupColumn:
        return ColumnCandidates(texts, kind);
    case ValueKind::ColourChoice:
        return Words({L"auto", L"always", L"never"});
    case ValueKind::Shell:
        return Words({L"bash", L"zsh", L"fish", L"powershell"});
    case ValueKind::Language:
        return Words({L"ruby", L"python", L"native"});
    default:
        return {};
    }
}

bool NeedsHost(ValueKind kind) {
    return kind == ValueKind::Jobs || kind == ValueKind::Scenario || kind == ValueKind::Parameter;
}

bool IsValue(const CompletionPoint& point) {
    return point.place == CompletionPoint::Place::OptionValue || point.place == CompletionPoint::Place::Operand;
}

/// Without usable settings nobody knows which host is meant.
std::vector<Candidate> AskHost(const CommandContext& context, const CompletionPoint& point) {
    if (!IsValue(point) || !NeedsHost(point.kind) || !settings::Problem().empty()) {
        return {};
    }
    CommandContext quick = context;
    quick.timeout = std::min(context.timeout, longestWait);
    try {
        return HostCandidates(quick, point);
    } catch (const CommandFailure&) {
        return {}; // no host, or none that answers in time
    }
}

const wchar_t* FileKind(const CompletionPoint& point) {
    if (IsValue(point) && point.kind == ValueKind::Directory) {
        return L"directories";
    }
    const bool isScenarioFile = point.place == CompletionPoint::Place::Operand && point.kind == ValueKind::Scenario &&
                                point.subcommand->kind != CommandKind::ParameterSets;
    return (IsValue(point) && point.kind == ValueKind::File) || isScenarioFile ? L"files" : L"words";
}

/// A value with a line end or another control character would not arrive.
bool IsUsable(const Candidate& candidate, const CompletionPoint& point) {
    return candidate.value.starts_with(point.typed) && OneLine(candidate.value) == candidate.value;
}

} // namespace

std::vector<Candidate> FixedCandidates(const Texts& texts, const CompletionPoint& point) {
    switch (point.place) {
    case CompletionPoint::Place::Subcommand:
        return SubcommandCandidates(texts, point.group);
    case CompletionPoint::Place::Option:
        return OptionCandidates(texts, point);
    case CompletionPoint::Place::OptionValue:
    case CompletionPoint::Place::Operand:
        break;
    }
    return ValueCandidates(texts, point.kind);
}

void WriteCandidates(CommandContext& context, const std::vector<std::wstring>& words) {
    const CompletionPoint point = PointIn(words);
    std::vector<Candidate> candidates = FixedCandidates(context.texts, point);
    const std::vector<Candidate> known = AskHost(context, point);
    candidates.insert(candidates.end(), known.begin(), known.end());
    std::erase_if(candidates, [&](const Candidate& candidate) { return !IsUsable(candidate, point); });
    std::wstring lines = FileKind(point) + std::wstring(L"\n");
    for (std::size_t i = 0; i < std::min(candidates.size(), mostCandidates); ++i) {
        lines += point.kept + candidates[i].value + L"\t" + OneLine(candidates[i].description) + L"\n";
    }
    context.console.Write(lines);
}

} // namespace front_end
