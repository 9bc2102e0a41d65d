#include "front_end/output/JobTable.h"

#include <algorithm>

#include "formats/JobStates.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/Table.h"
#include "platform/files/NativePath.h"

namespace front_end {
namespace {

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
                                        ProgressKind kind, std::optional<std::size_t> width,
                                        const std::vector<const JobColumn*>& columns) {
    std::vector<Column> headings;
    headings.reserve(columns.size());
    for (const JobColumn* column : columns) {
        headings.push_back({context.texts.Get(column->textKey), column->kind});
    }
    std::vector<std::vector<Cell>> rows;
    rows.reserve(jobs.size());
    for (const JobRow* view : jobs) {
        std::vector<Cell>& row = rows.emplace_back();
        row.reserve(columns.size());
        for (const JobColumn* column : columns) {
            row.push_back(column->cell(context, *view, kind));
        }
    }
    return TableLines(headings, std::move(rows), {width, context.console.HasColours(), context.console.HasLinks()});
}

void WriteJobTable(CommandContext& context, const std::vector<JobRow>& jobs,
                   const std::vector<const JobColumn*>& columns) {
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
    context.console.Write(JoinedLines(JobTableLines(context, shown, ProgressKind::Percent, width, columns)));
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
