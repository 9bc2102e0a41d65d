#include "front_end/output/JobColumns.h"

#include <algorithm>

#include "formats/JobStates.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/JobFilter.h"
#include "front_end/jobs/Forecast.h"
#include "front_end/output/JobTable.h"
#include "platform/files/NativePath.h"
#include "platform/system/Clock.h"

namespace front_end {

std::wstring WaitText(const Texts& texts, const ListedJob& job) {
    if (job.status != JobStatus::Queued || job.waitReason.empty()) {
        return {};
    }
    const std::wstring what = job.waitReason == L"time" ? platform::UtcText(job.notBefore) : job.waitName;
    return texts.Format(L"Waiting/" + job.waitReason, {what});
}

namespace {

/// For a job that has failed before and has not ended.
std::wstring AttemptText(const Texts& texts, const ListedJob& job) {
    if (job.lastEnding.empty() || IsOver(job.status)) {
        return {};
    }
    const std::int32_t next = job.attempt + (job.status == JobStatus::Queued ? 1 : 0);
    return texts.Format(L"Waiting/attempt",
                        {std::to_wstring(next), std::to_wstring(MostAttempts(job)), job.lastEnding});
}

} // namespace

bool ShowsOutputDirectory(const JobRow& view) {
    return view.job.status == JobStatus::Success && !view.outputFolder.empty();
}

std::wstring ResultText(const Texts& texts, const JobRow& view) {
    for (std::wstring text : {AttemptText(texts, view.job), WaitText(texts, view.job)}) {
        if (!text.empty()) {
            return text;
        }
    }
    return ShowsOutputDirectory(view) ? platform::ToNativeText(view.outputFolder) : view.message;
}

namespace {

Colour ColourOf(JobStatus status) {
    switch (status) {
    case JobStatus::Running:
        return Colour::Cyan;
    case JobStatus::Success:
        return Colour::Green;
    case JobStatus::Failed:
        return Colour::Red;
    case JobStatus::Dequeued:
    case JobStatus::Canceling:
    case JobStatus::Canceled:
        return Colour::Yellow;
    case JobStatus::Queued:
        break;
    }
    return Colour::None;
}

std::wstring TwoDigits(std::int64_t number) {
    return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

Cell ResultCell(const Texts& texts, const JobRow& view) {
    const bool isDirectory = ShowsOutputDirectory(view);
    return {ResultText(texts, view), Colour::None, isDirectory ? CutAt::Beginning : CutAt::End,
            isDirectory ? platform::ToNativeText(view.outputFolder) : std::wstring()};
}

using Context = CommandContext;

std::wstring TimeCell(const std::wstring& time) {
    std::wstring shown = time;
    std::replace(shown.begin(), shown.end(), L'T', L' ');
    shown.erase(std::min(shown.find(L'Z'), shown.size()));
    return shown;
}

template <auto member>
bool Before(const ListedJob& left, const ListedJob& right) {
    return left.*member < right.*member;
}

template <auto text>
bool TextBefore(const ListedJob& left, const ListedJob& right) {
    return text(left) < text(right);
}

std::wstring ScenarioOf(const ListedJob& job) {
    return job.scenario.displayName;
}

std::wstring InputOf(const ListedJob& job) {
    return InputText(job);
}

std::wstring LabelOfListed(const ListedJob& job) {
    return LabelOf(job);
}

std::int64_t RunningTime(const ListedJob& job) {
    return SecondsOf(job, platform::Now());
}

template <auto text>
std::wstring Group(const Context&, const ListedJob& job) {
    return text(job);
}

std::wstring StateGroup(const Context& context, const ListedJob& job) {
    return StatusText(context.texts, job.status);
}

std::wstring PriorityGroup(const Context&, const ListedJob& job) {
    return std::to_wstring(job.priority);
}

} // namespace

std::wstring ProgressBar(std::int32_t progress) {
    constexpr std::size_t length = 20;
    const auto filled = static_cast<std::size_t>(std::clamp(progress, 0, 100)) * length / 100;
    const std::wstring percent = PercentText(progress);
    return L"[" + std::wstring(filled, L'#') + std::wstring(length - filled, L'.') + L"] " +
           std::wstring(5 - percent.size(), L' ') + percent;
}

std::wstring PercentText(std::int32_t progress) {
    return std::to_wstring(std::clamp(progress, 0, 100)) + L" %";
}

std::wstring DurationText(std::int64_t seconds) {
    if (seconds < 0) {
        return {};
    }
    const std::int64_t hours = seconds / 3600;
    const std::int64_t minutes = seconds / 60 % 60;
    return (hours > 0 ? std::to_wstring(hours) + L":" + TwoDigits(minutes) : std::to_wstring(minutes)) + L":" +
           TwoDigits(seconds % 60);
}

const std::vector<JobColumn>& AllJobColumns() {
    using Kind = ProgressKind;
    static const std::vector<JobColumn> columns = {
        {L"number", L"Table/Job", ColumnKind::Number,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {std::to_wstring(row.job.seqId)}; },
         Before<&ListedJob::seqId>, nullptr},
        {L"id", L"Table/Id", ColumnKind::Whole,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {row.job.id}; }, Before<&ListedJob::id>, nullptr},
        {L"state", L"Table/State", ColumnKind::Whole,
         [](const Context& context, const JobRow& row, Kind) -> Cell {
             return {StatusText(context.texts, row.job.status), ColourOf(row.job.status)};
         },
         Before<&ListedJob::status>, StateGroup},
        {L"progress", L"Table/Progress", ColumnKind::Number,
         [](const Context&, const JobRow& row, Kind kind) -> Cell {
             return {kind == Kind::Bar ? ProgressBar(row.progress) : PercentText(row.progress)};
         },
         Before<&ListedJob::progress>, nullptr},
        {L"time", L"Table/Time", ColumnKind::Number,
         [](const Context& context, const JobRow& row, Kind) -> Cell {
             return {DurationText(SecondsOf(row.job, context.now()))};
         },
         TextBefore<RunningTime>, nullptr},
        {L"left", L"Table/Left", ColumnKind::Number,
         [](const Context& context, const JobRow& row, Kind) -> Cell {
             return {DurationText(TimeLeft(row, context.now()).value_or(-1))};
         },
         nullptr, nullptr},
        {L"scenario", L"Table/Scenario", ColumnKind::Flexible,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {row.job.scenario.displayName}; },
         TextBefore<ScenarioOf>, Group<ScenarioOf>},
        {L"input", L"Table/Input", ColumnKind::Flexible,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {InputText(row.job)}; }, TextBefore<InputOf>,
         Group<InputOf>},
        {L"result", L"Table/Result", ColumnKind::Flexible,
         [](const Context& context, const JobRow& row, Kind) { return ResultCell(context.texts, row); }, nullptr,
         nullptr},
        {L"label", L"Table/Label", ColumnKind::Flexible,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {LabelOf(row.job)}; }, TextBefore<LabelOfListed>,
         Group<LabelOfListed>},
        {L"priority", L"Table/Priority", ColumnKind::Number,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {std::to_wstring(row.job.priority)}; },
         Before<&ListedJob::priority>, PriorityGroup},
        {L"queued", L"Table/Queued", ColumnKind::Whole,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {TimeCell(TimeText(row.job.queuedTime))}; },
         Before<&ListedJob::queuedTime>, nullptr},
        {L"started", L"Table/Started", ColumnKind::Whole,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {TimeCell(row.job.startTime)}; },
         Before<&ListedJob::startTime>, nullptr},
        {L"ended", L"Table/Ended", ColumnKind::Whole,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {TimeCell(row.job.endTime)}; },
         Before<&ListedJob::endTime>, nullptr},
        {L"argument", L"Table/Argument", ColumnKind::Flexible,
         [](const Context&, const JobRow& row, Kind) -> Cell { return {row.job.runArgument}; },
         Before<&ListedJob::runArgument>, nullptr},
    };
    return columns;
}

std::vector<const JobColumn*> JobColumnsNamed(const std::vector<std::wstring>& names) {
    std::vector<const JobColumn*> named;
    for (const std::wstring& name : names) {
        const auto& all = AllJobColumns();
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const JobColumn& column) { return column.name == name; });
        if (found == all.end()) {
            throw UsageProblem{L"Usage/Column", name};
        }
        named.push_back(&*found);
    }
    return named;
}

std::vector<const JobColumn*> LiveJobColumns() {
    return JobColumnsNamed({L"number", L"state", L"progress", L"time", L"left", L"scenario", L"input", L"result"});
}

std::vector<const JobColumn*> UsualJobColumns() {
    return JobColumnsNamed({L"number", L"state", L"progress", L"time", L"scenario", L"input", L"result"});
}

} // namespace front_end
