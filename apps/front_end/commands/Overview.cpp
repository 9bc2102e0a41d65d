#include <algorithm>
#include <cstdint>
#include <optional>

#include "formats/JobStates.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/HostStates.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/JobTable.h"

namespace front_end::commands {
namespace {

/// With host, numbers, headings and hint ten lines.
constexpr std::size_t mostRows = 6;

QueueNumbers NumbersOf(const std::vector<ListedJob>& jobs, bool isPaused) {
    QueueNumbers numbers{{}, isPaused};
    for (const ListedJob& job : jobs) {
        ++CountOf(numbers, job.status);
    }
    return numbers;
}

std::wstring NumbersLine(const CommandContext& context, const QueueNumbers& numbers) {
    const auto format = [&](const wchar_t* key) {
        return context.texts.Format(key, {std::to_wstring(numbers.queued), std::to_wstring(numbers.running),
                                          std::to_wstring(numbers.succeeded), std::to_wstring(numbers.failed),
                                          std::to_wstring(numbers.cancelled)});
    };
    return format(numbers.isPaused ? L"Overview/PausedNumbers" : L"Overview/Numbers");
}

/// Running jobs before waiting ones before ended ones; of the ended ones the newest.
std::vector<ListedJob> MostRelevant(const std::vector<ListedJob>& jobs) {
    std::vector<ListedJob> relevant;
    const auto append = [&](auto begin, auto end, auto condition) {
        for (auto job = begin; job != end && relevant.size() < mostRows; ++job) {
            if (condition(job->status)) {
                relevant.push_back(*job);
            }
        }
    };
    append(jobs.begin(), jobs.end(), IsActive);
    append(jobs.begin(), jobs.end(), [](JobStatus status) { return status == JobStatus::Queued; });
    append(jobs.rbegin(), jobs.rend(), IsOver);
    return relevant;
}

void WriteLines(CommandContext& context, const std::vector<std::wstring>& lines) {
    for (const std::wstring& line : lines) {
        context.console.Write((context.console.IsTerminal() ? Cut(line, context.console.Width()) : line) + L"\n");
    }
}

} // namespace

ExitCode Overview(CommandContext& context, const Command& command) {
    const HostState host = StateOfHost(context);
    if (!host.isRunning) {
        if (command.asJson) {
            context.console.Write(OverviewJson(host, std::nullopt));
        } else {
            WriteLines(context, {HostLine(context), UsageHint(context)});
        }
        return ExitCode::Success;
    }
    HostSession session(context, Start::Never);
    const std::vector<ListedJob> jobs = session.FetchJobs();
    const QueueNumbers numbers = NumbersOf(jobs, session.FetchQueueState().isPaused);
    if (command.asJson) {
        context.console.Write(OverviewJson(host, numbers));
        return ExitCode::Success;
    }
    WriteLines(context, {HostLine(context), NumbersLine(context, numbers)});
    if (!jobs.empty()) {
        WriteJobTable(context, JobModel(MostRelevant(jobs)).Views());
    }
    WriteLines(context, {UsageHint(context)});
    return ExitCode::Success;
}

} // namespace front_end::commands
