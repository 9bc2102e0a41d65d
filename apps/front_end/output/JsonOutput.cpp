#include "front_end/output/JsonOutput.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "front_end/jobs/JobConditions.h"
#include "front_end/output/PortableJson.h"
#include "platform/files/NativePath.h"

namespace front_end {
namespace {

/// Paths are in native notation.
struct JobReport : RunRules {
    std::int32_t number = 0;
    std::wstring id;
    std::wstring status;
    std::int32_t progress = 0;
    std::wstring message;
    std::wstring scenario;
    std::vector<std::wstring> inputFiles;
    std::wstring runArgument;
    std::wstring outputFolder;
    std::wstring workDirectory;
    std::wstring startTime;
    std::wstring endTime;
    std::vector<std::wstring> messages;
    std::vector<std::wstring> outputFiles;
    std::wstring queuedTime;
    std::int32_t priority = 0;
    bool isOnHold = false;
    std::vector<std::wstring> after;
    std::vector<std::wstring> afterEnd;
    std::wstring notBefore;
    std::map<std::wstring, std::int64_t> needs;
    std::wstring waitReason;
    std::wstring waitName;
    std::int32_t attempt = 0;
    std::int32_t attempts = 0;
    std::wstring lastEnding;
    std::wstring scenarioId;
    std::wstring label;
};

struct ScenarioReport {
    std::wstring id;
    std::wstring name;
    std::wstring path;
    std::vector<InputFileSpec> inputs;
};

struct JobsDocument {
    std::vector<JobReport> jobs;
};

struct ScenariosDocument {
    std::vector<ScenarioReport> scenarios;
    std::optional<std::vector<std::wstring>> problems;
};

struct ParameterSetsDocument {
    std::vector<ScenarioParameterSetInfo> parameterSets;
};

std::vector<std::wstring> NativeTexts(const std::vector<std::wstring>& paths) {
    std::vector<std::wstring> texts;
    std::transform(paths.begin(), paths.end(), std::back_inserter(texts), platform::ToNativeText);
    return texts;
}

JobReport ReportOf(JobRow view) {
    ListedJob& job = view.job;
    JobReport report;
    report.number = job.seqId;
    report.label = LabelOf(job);
    report.scenarioId = std::move(job.scenario.id);
    report.id = std::move(job.id);
    report.status = StatusName(job.status);
    report.progress = view.progress;
    report.message = std::move(view.message);
    report.scenario = std::move(job.scenario.displayName);
    report.inputFiles = NativeTexts(job.inputFiles);
    report.runArgument = std::move(job.runArgument);
    report.outputFolder = platform::ToNativeText(view.outputFolder);
    report.workDirectory = platform::ToNativeText(view.workDirectory);
    report.startTime = std::move(job.startTime);
    report.endTime = std::move(job.endTime);
    report.messages = std::move(view.messages);
    report.outputFiles = NativeTexts(view.outputFiles);
    report.queuedTime = TimeText(job.queuedTime);
    report.priority = job.priority;
    report.isOnHold = job.hold;
    report.after = std::move(job.after);
    report.afterEnd = std::move(job.afterEnd);
    report.notBefore = TimeText(job.notBefore);
    report.needs = std::move(job.needs);
    report.waitReason = std::move(job.waitReason);
    report.waitName = std::move(job.waitName);
    if (MostAttempts(job) > 1) {
        report.attempt = job.attempt;
        report.attempts = MostAttempts(job);
        report.lastEnding = std::move(job.lastEnding);
    }
    static_cast<RunRules&>(report) = static_cast<const RunRules&>(job);
    return report;
}

ScenarioReport ReportOf(const ScenarioInfo& scenario) {
    return {scenario.id, scenario.displayName, platform::ToNativeText(scenario.path), scenario.inputs};
}

} // namespace
} // namespace front_end

namespace json {

template <>
struct Layout<front_end::JobReport> {
    using Record = front_end::JobReport;
    static constexpr auto members = std::tuple_cat(
        std::make_tuple(Member{"number", &Record::number}, Member{"id", &Record::id}, Member{"status", &Record::status},
                        Member{"progress", &Record::progress}, Member{"message", &Record::message},
                        Member{"scenario", &Record::scenario}, Member{"inputFiles", &Record::inputFiles},
                        Member{"runArgument", &Record::runArgument}, Member{"outputFolder", &Record::outputFolder},
                        Member{"workFolder", &Record::workDirectory}, Member{"startTime", &Record::startTime},
                        Member{"endTime", &Record::endTime}, Member{"messages", &Record::messages},
                        Member{"outputFiles", &Record::outputFiles}, OptionalMember{"queuedTime", &Record::queuedTime},
                        OptionalMember{"priority", &Record::priority}, OptionalMember{"hold", &Record::isOnHold},
                        OptionalMember{"after", &Record::after}, OptionalMember{"afterEnd", &Record::afterEnd},
                        OptionalMember{"notBefore", &Record::notBefore}, OptionalMember{"needs", &Record::needs},
                        OptionalMember{"waitReason", &Record::waitReason},
                        OptionalMember{"waitName", &Record::waitName}, OptionalMember{"attempt", &Record::attempt},
                        OptionalMember{"attempts", &Record::attempts},
                        OptionalMember{"lastEnding", &Record::lastEnding}),
        Layout<RunRules>::members,
        std::make_tuple(OptionalMember{"scenarioId", &Record::scenarioId}, OptionalMember{"label", &Record::label}));
};

template <>
struct Layout<front_end::ScenarioReport> {
    using Record = front_end::ScenarioReport;
    static constexpr auto members = std::make_tuple(Member{"id", &Record::id}, Member{"name", &Record::name},
                                                    Member{"path", &Record::path}, Member{"inputs", &Record::inputs});
};

template <>
struct Layout<front_end::JobsDocument> {
    static constexpr auto members = std::make_tuple(Version(), Member{"jobs", &front_end::JobsDocument::jobs});
};

template <>
struct Layout<front_end::ScenariosDocument> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"scenarios", &front_end::ScenariosDocument::scenarios},
                        OptionalMember{"problems", &front_end::ScenariosDocument::problems});
};

template <>
struct Layout<front_end::ParameterSetsDocument> {
    static constexpr auto members =
        std::make_tuple(Version(), Member{"parameterSets", &front_end::ParameterSetsDocument::parameterSets});
};

} // namespace json

namespace front_end {
namespace {

std::optional<std::size_t> IndexOfMember(const std::wstring& name) {
    const std::vector<std::wstring>& names = json::MemberNames<JobReport>();
    const auto found = std::find(names.begin(), names.end(), L"\"" + name + L"\":");
    return found == names.end() ? std::nullopt : std::optional<std::size_t>(found - names.begin());
}

} // namespace

std::wstring JobsJsonParts::Rows(std::vector<JobRow> jobs) {
    JobsDocument document;
    document.jobs.reserve(jobs.size());
    for (JobRow& view : jobs) {
        document.jobs.push_back(ReportOf(std::move(view)));
    }
    std::wstring text = json::Write(document);
    MakePortable(text);
    text.erase(text.rfind(L']'));
    if (std::exchange(hasBegun, true)) {
        text.replace(0, text.find(L'[') + 1, jobs.empty() ? L"" : L",");
    }
    return text;
}

std::wstring JobsJson(std::vector<JobRow> jobs) {
    return JobsJsonParts().Rows(std::move(jobs)) + JobsJsonParts::End();
}

JobMembers JobMembers::All() {
    JobMembers members;
    members.isSelected.assign(json::MemberNames<JobReport>().size(), true);
    return members;
}

JobMembers JobMembers::InLists() const {
    return Without({L"outputFolder", L"workFolder", L"messages", L"outputFiles"});
}

JobMembers JobMembers::Without(std::initializer_list<const wchar_t*> names) const {
    JobMembers members = *this;
    for (const wchar_t* const name : names) {
        members.isSelected[IndexOfMember(name).value()] = false;
    }
    return members;
}

std::optional<JobMembers> JobMembers::Named(const std::vector<std::wstring>& names, std::wstring& unknown) {
    JobMembers members;
    members.isSelected.assign(json::MemberNames<JobReport>().size(), false);
    for (const std::wstring& name : names) {
        const auto index = IndexOfMember(name);
        if (!index) {
            unknown = name;
            return std::nullopt;
        }
        members.isSelected[*index] = true;
    }
    return members;
}

void AppendJob(JobRow job, const JobMembers& members, std::wstring& json) {
    const JobReport report = ReportOf(std::move(job));
    const std::size_t begin = json.size();
    std::size_t index = 0;
    json += L'{';
    const auto append = [&](const auto& member) {
        if (members.Has(index) && !json::IsOmitted(report, member)) {
            json += json.back() == L'{' ? L"" : L",";
            json += json::MemberNames<JobReport>()[index];
            json::AppendMember(report, member, json);
        }
        ++index;
    };
    std::apply([&](const auto&... member) { (append(member), ...); }, json::Layout<JobReport>::members);
    json += L'}';
    MakePortable(json, begin);
}

std::wstring ScenariosJson(const std::vector<ScenarioInfo>& scenarios,
                           std::optional<std::vector<std::wstring>> problems) {
    ScenariosDocument document;
    document.problems = std::move(problems);
    for (const ScenarioInfo& scenario : scenarios) {
        document.scenarios.push_back(ReportOf(scenario));
    }
    return PortableLine(document);
}

std::wstring ParameterSetsJson(const std::vector<ScenarioParameterSetInfo>& parameterSets) {
    return PortableLine(ParameterSetsDocument{parameterSets});
}

} // namespace front_end
