#include "front_end/output/JobTable.h"

#include <algorithm>

#include "formats/JobStates.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/Table.h"
#include "platform/files/NativePath.h"
#include "platform/system/Clock.h"

namespace front_end {
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

std::wstring PercentText(std::int32_t progress) {
    return std::to_wstring(std::clamp(progress, 0, 100)) + L" %";
}

std::wstring Bar(std::int32_t progress) {
    constexpr std::size_t length = 20;
    const auto filled = static_cast<std::size_t>(std::clamp(progress, 0, 100)) * length / 100;
    const std::wstring percent = PercentText(progress);
    return L"[" + std::wstring(filled, L'#') + std::wstring(length - filled, L'.') + L"] " +
           std::wstring(5 - percent.size(), L' ') + percent;
}

std::wstring TwoDigits(std::int64_t number) {
    return (number < 10 ? L"0" : L"") + std::to_wstring(number);
}

/// "0:07", "1:02:03"; empty for a job that has not started.
std::wstring TimeText(std::int64_t seconds) {
    if (seconds < 0) {
        return {};
    }
    const std::int64_t hours = seconds / 3600;
    const std::int64_t minutes = seconds / 60 % 60;
    return (hours > 0 ? std::to_wstring(hours) + L":" + TwoDigits(minutes) : std::to_wstring(minutes)) + L":" +
           TwoDigits(seconds % 60);
}

bool ShowsOutputDirectory(const JobRow& view) {
    return view.job.status == JobStatus::Success && !view.outputFolder.empty();
}

/// Why the job waits; empty if only for its turn.
std::wstring WaitText(const Texts& texts, const ListedJob& job) {
    if (job.status != JobStatus::Queued || job.waitReason.empty()) {
        return {};
    }
    const std::wstring what = job.waitReason == L"time" ? platform::UtcText(job.notBefore) : job.waitName;
    return texts.Format(L"Waiting/" + job.waitReason, {what});
}

/// For a job that has failed before and has not ended.
std::wstring AttemptText(const Texts& texts, const ListedJob& job) {
    if (job.lastEnding.empty() || IsOver(job.status)) {
        return {};
    }
    const std::int32_t next = job.attempt + (job.status == JobStatus::Queued ? 1 : 0);
    return texts.Format(L"Waiting/attempt",
                        {std::to_wstring(next), std::to_wstring(MostAttempts(job)), job.lastEnding});
}

std::wstring ResultText(const Texts& texts, const JobRow& view) {
    for (std::wstring text : {AttemptText(texts, view.job), WaitText(texts, view.job)}) {
        if (!text.empty()) {
            return text;
        }
    }
    return ShowsOutputDirectory(view) ? platform::ToNativeText(view.outputFolder) : view.message;
}

Cell ResultCell(const Texts& texts, const JobRow& view) {
    return {ResultText(texts, view), Colour::None, ShowsOutputDirectory(view) ? CutAt::Beginning : CutAt::End};
}

std::vector<Column> Columns(const Texts& texts) {
    return {{texts.Get(L"Table/Job"), ColumnKind::Number},        {texts.Get(L"Table/State"), ColumnKind::Whole},
            {texts.Get(L"Table/Progress"), ColumnKind::Number},   {texts.Get(L"Table/Time"), ColumnKind::Number},
            {texts.Get(L"Table/Scenario"), ColumnKind::Flexible}, {texts.Get(L"Table/Input"), ColumnKind::Flexible},
            {texts.Get(L"Table/Result"), ColumnKind::Flexible}};
}

std::vector<Cell> RowOf(const CommandContext& context, const JobRow& view, ProgressKind kind) {
    const JobListInfo& job = view.job;
    return {{std::to_wstring(job.seqId)},
            {StatusText(context.texts, job.status), ColourOf(job.status)},
            {kind == ProgressKind::Bar ? Bar(view.progress) : PercentText(view.progress)},
            {TimeText(SecondsOf(job, context.now()))},
            {job.scenario.displayName},
            {InputText(job)},
            ResultCell(context.texts, view)};
}

void AppendMessage(const std::wstring& heading, const std::wstring& message, std::vector<std::wstring>& lines) {
    std::wstring indent = heading;
    for (std::size_t begin = 0; begin <= message.size();) {
        const std::size_t end = std::min(message.find(L'\n', begin), message.size());
        lines.push_back(indent + OneLine(message.substr(begin, end - begin)));
        indent = L"  ";
        begin = end + 1;
    }
}

template <typename Predicate>
std::wstring Count(const std::vector<JobRow>& jobs, Predicate predicate) {
    return std::to_wstring(
        std::count_if(jobs.begin(), jobs.end(), [&](const JobRow& view) { return predicate(view.job.status); }));
}

} // namespace

std::wstring JoinedLines(const std::vector<std::wstring>& lines) {
    std::wstring joined;
    for (const std::wstring& line : lines) {
        joined += line + L"\n";
    }
    return joined;
}

std::wstring StatusText(const Texts& texts, JobStatus status) {
    return texts.Get(L"Status/" + StatusName(status));
}

std::wstring InputText(const JobListInfo& job) {
    if (job.inputFiles.empty()) {
        return {};
    }
    const std::wstring more =
        job.inputFiles.size() > 1 ? L" +" + std::to_wstring(job.inputFiles.size() - 1) : std::wstring();
    return platform::FileName(job.inputFiles.front()) + more;
}

std::vector<std::wstring> JobTableLines(const CommandContext& context, const std::vector<const JobRow*>& jobs,
                                        ProgressKind kind, std::optional<std::size_t> width) {
    std::vector<std::vector<Cell>> rows;
    rows.reserve(jobs.size());
    for (const JobRow* view : jobs) {
        rows.push_back(RowOf(context, *view, kind));
    }
    return TableLines(Columns(context.texts), std::move(rows), {width, context.console.HasColours()});
}

void WriteJobTable(CommandContext& context, const std::vector<JobRow>& jobs) {
    if (jobs.empty()) {
        context.console.Write(context.texts.Get(L"Outcome/NoJobs") + L"\n");
        return;
    }
    std::vector<const JobRow*> shown;
    shown.reserve(jobs.size());
    for (const JobRow& view : jobs) {
        shown.push_back(&view);
    }
    const auto width =
        context.console.IsTerminal() ? std::optional<std::size_t>(context.console.Width()) : std::nullopt;
    context.console.Write(JoinedLines(JobTableLines(context, shown, ProgressKind::Percent, width)));
}

std::wstring JobLine(const CommandContext& context, const JobRow& view) {
    const JobListInfo& job = view.job;
    const std::wstring line =
        context.texts.Format(L"Outcome/Line", {std::to_wstring(job.seqId), StatusText(context.texts, job.status),
                                               PercentText(view.progress), job.scenario.displayName, InputText(job)});
    const std::wstring result = ResultText(context.texts, view);
    return OneLine(result.empty() ? line : line + L": " + result);
}

std::vector<std::wstring> MessageLines(const CommandContext& context, const std::vector<JobRow>& jobs) {
    std::vector<std::wstring> lines;
    for (const JobRow& view : jobs) {
        const std::wstring heading = context.texts.Format(L"Outcome/JobMessage", {std::to_wstring(view.job.seqId)});
        for (std::size_t i = ShowsOutputDirectory(view) ? 0 : 1; i < view.messages.size(); ++i) {
            AppendMessage(heading, view.messages[i], lines);
        }
    }
    return lines;
}

std::wstring QueueSummary(const CommandContext& context, const std::vector<JobRow>& jobs) {
    return context.texts.Format(L"Outcome/Queue",
                                {Count(jobs, [](JobStatus status) { return status == JobStatus::Queued; }),
                                 Count(jobs, IsActive), Count(jobs, IsOver)});
}

std::wstring OutcomeSummary(const CommandContext& context, const std::vector<JobRow>& jobs) {
    const auto isCancelled = [](JobStatus status) {
        return status == JobStatus::Canceled || status == JobStatus::Dequeued;
    };
    const auto hasFailed = [&](JobStatus status) { return status != JobStatus::Success && !isCancelled(status); };
    return context.texts.Format(L"Outcome/Summary",
                                {Count(jobs, [](JobStatus status) { return status == JobStatus::Success; }),
                                 Count(jobs, hasFailed), Count(jobs, isCancelled)});
}

} // namespace front_end
