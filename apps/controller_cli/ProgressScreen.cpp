#include "controller_cli/ProgressScreen.h"

#include <algorithm>

#include "controller_cli/DisplayText.h"
#include "controller_cli/JobTable.h"

namespace controller_cli {
namespace {

/// What must be seen comes first.
int Rank(JobStatus status) {
    if (status == JobStatus::Queued) {
        return 2;
    }
    return HasEnded(status) ? 1 : 0;
}

std::wstring UpOver(std::size_t lines) {
    return lines == 0 ? std::wstring() : L"\x1b[" + std::to_wstring(lines) + L"A";
}

} // namespace

ProgressScreen::ProgressScreen(CommandContext& commandContext, const JobBoard& jobBoard)
    : context(commandContext), board(jobBoard) {
    for (const JobView& view : board.Views()) {
        if (HasEnded(view.job.status)) {
            endedBefore.insert(view.job.id);
        }
    }
}

void ProgressScreen::Show(const std::vector<std::wstring>& changed) {
    if (context.console.IsTerminal()) {
        Redraw();
    } else {
        ShowLines(changed);
    }
}

void ProgressScreen::ShowLines(const std::vector<std::wstring>& changed) {
    const std::set<std::wstring> wanted(changed.begin(), changed.end());
    std::wstring lines;
    for (const JobView& view : board.Views()) {
        if (wanted.contains(view.job.id)) {
            lines += JobLine(context, view) + L"\n";
        }
    }
    context.console.Write(lines);
}

std::vector<const JobView*> ProgressScreen::JobsToShow(std::size_t room) const {
    std::vector<const JobView*> jobs;
    for (const JobView& view : board.Views()) {
        if (view.job.status != deletedStatus && !endedBefore.contains(view.job.id)) {
            jobs.push_back(&view);
        }
    }
    if (jobs.size() <= room) {
        return jobs;
    }
    // Addresses within one list are in list order.
    std::stable_sort(jobs.begin(), jobs.end(), [](const JobView* left, const JobView* right) {
        return Rank(left->job.status) < Rank(right->job.status);
    });
    jobs.resize(room);
    std::sort(jobs.begin(), jobs.end());
    return jobs;
}

void ProgressScreen::Clear() {
    if (linesDrawn > 0) {
        context.console.Write(UpOver(linesDrawn) + L"\x1b[J");
        linesDrawn = 0;
    }
}

/// Goes up over what was drawn before. No line reaches the last column, where some terminals would begin a new one.
void ProgressScreen::Redraw() {
    const std::size_t width = std::max<std::size_t>(context.console.Width(), 2) - 1;
    constexpr std::size_t otherLines = 3; // headings, summary, cursor
    const std::size_t room = std::max(context.console.Height(), otherLines + 1) - otherLines;
    std::vector<std::wstring> lines = JobTableLines(context, JobsToShow(room), ProgressKind::Bar, width);
    lines.push_back(Cut(QueueSummary(context, board.Views()), width));
    std::wstring screen = UpOver(linesDrawn);
    for (const std::wstring& line : lines) {
        screen += line + L"\x1b[K\n";
    }
    screen += L"\x1b[J";
    linesDrawn = lines.size();
    context.console.Write(screen);
}

} // namespace controller_cli
