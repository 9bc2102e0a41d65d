#include "front_end/output/ProgressScreen.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "formats/JobStates.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/JobColumns.h"
#include "front_end/output/JobTable.h"

namespace front_end {
namespace {

/// Appends jobs of one kind to the jobs shown, up to `room`.
void Append(const std::vector<const JobRow*>& jobs, std::size_t room, std::vector<const JobRow*>& shown) {
    shown.insert(shown.end(), jobs.begin(), jobs.begin() + static_cast<std::ptrdiff_t>(std::min(room, jobs.size())));
}

std::wstring UpOver(std::size_t lines) {
    return lines == 0 ? std::wstring() : L"\x1b[" + std::to_wstring(lines) + L"A";
}

/// With one digit behind the point where it matters.
std::wstring RateText(double rate) {
    const auto tenths = std::llround(rate * 10);
    const std::wstring whole = std::to_wstring(tenths / 10);
    return tenths >= 100 ? whole : whole + L"." + std::to_wstring(tenths % 10);
}

std::wstring ForecastText(const Texts& texts, const Forecast& forecast) {
    std::wstring text;
    if (forecast.jobsPerMinute) {
        const bool isFast = *forecast.jobsPerMinute >= 1;
        text = texts.Format(isFast ? L"Outcome/PerMinute" : L"Outcome/PerHour",
                            {RateText(*forecast.jobsPerMinute * (isFast ? 1 : 60))}) +
               L", ";
    }
    return text + (forecast.left ? texts.Format(L"Outcome/Left", {DurationText(*forecast.left)})
                                 : texts.Get(L"Outcome/LeftUnknown"));
}

} // namespace

ProgressScreen::ProgressScreen(CommandContext& commandContext, const JobModel& jobBoard)
    : context(commandContext), board(jobBoard), begun(commandContext.now()) {
    for (const JobRow& view : board.Views()) {
        if (IsOver(view.job.status)) {
            endedBefore.insert(view.job.id);
        }
    }
    atBegin = ProgressOf(JobsOfInterest());
}

std::vector<const JobRow*> ProgressScreen::JobsOfInterest() const {
    std::vector<const JobRow*> jobs;
    for (const JobRow& view : board.Views()) {
        if (view.job.status != unlistedStatus && !endedBefore.contains(view.job.id)) {
            jobs.push_back(&view);
        }
    }
    return jobs;
}

std::optional<std::chrono::milliseconds> ProgressScreen::Interval() const {
    return context.console.IsTerminal() ? std::optional(std::chrono::milliseconds(1000)) : std::nullopt;
}

void ProgressScreen::Show(const std::vector<std::wstring>& changed) {
    NoteEnds(changed);
    if (context.console.IsTerminal()) {
        Redraw();
    } else {
        ShowLines(changed);
    }
}

void ProgressScreen::ShowLines(const std::vector<std::wstring>& changed) {
    const std::set<std::wstring> wanted(changed.begin(), changed.end());
    std::wstring lines;
    for (const JobRow& view : board.Views()) {
        if (wanted.contains(view.job.id)) {
            lines += JobLine(context, view) + L"\n";
        }
    }
    context.console.Write(lines);
}

void ProgressScreen::NoteEnds(const std::vector<std::wstring>& changed) {
    for (const std::wstring& id : changed) {
        const JobRow* const view = board.Find(id);
        if (view != nullptr && IsOver(view->job.status)) {
            orderOfEnds.try_emplace(id, orderOfEnds.size());
        }
    }
}

std::vector<const JobRow*> ProgressScreen::JobsToShow(std::size_t room) const {
    std::vector<const JobRow*> active;
    std::vector<const JobRow*> waiting;
    std::vector<const JobRow*> ended;
    for (const JobRow* view : JobsOfInterest()) {
        const bool isWaiting = view->job.status == JobStatus::Queued;
        (isWaiting ? waiting : IsOver(view->job.status) ? ended : active).push_back(view);
    }
    std::stable_sort(ended.begin(), ended.end(), [this](const JobRow* left, const JobRow* right) {
        return orderOfEnds.at(left->job.id) > orderOfEnds.at(right->job.id);
    });
    std::vector<const JobRow*> shown;
    Append(active, room, shown);
    const std::size_t left = room - shown.size();
    Append(waiting, left - std::min(ended.size(), left / 2), shown);
    Append(ended, room - shown.size(), shown);
    return shown;
}

void ProgressScreen::Clear() {
    if (!drawn.lines.empty()) {
        context.console.Write(ToBeginning(drawn) + L"\x1b[J");
        drawn = {};
    }
}

/// No line reaches the last column, where some terminals wrap.
ProgressScreen::Drawing ProgressScreen::Draw() const {
    Drawing drawing{context.console.Width(), context.console.Height(), {}};
    const std::size_t width = std::max<std::size_t>(drawing.width, 2) - 1;
    constexpr std::size_t otherLines = 3; // headings, summary, cursor
    const std::size_t room = std::max(drawing.height, otherLines + 1) - otherLines;
    drawing.lines = JobTableLines(context, JobsToShow(room), ProgressKind::Bar, width, LiveJobColumns());
    drawing.lines.push_back(Cut(Summary(width), width));
    return drawing;
}

std::wstring ProgressScreen::Summary(std::size_t width) const {
    std::wstring summary = QueueSummary(context, board.Views());
    const JobsProgress progress = ProgressOf(JobsOfInterest());
    if (progress.jobCount == 0) {
        return summary;
    }
    const auto extend = [&](const std::wstring& before, const std::wstring& after) {
        const std::wstring longer = before + summary + after;
        summary = DisplayWidth(longer) <= width ? longer : summary;
    };
    extend({}, L", " + ForecastText(context.texts, ForecastOf(atBegin, progress, context.now() - begun)));
    extend(ProgressBar(progress.Percent()) + L"  ", {});
    return summary;
}

/// Moves to the start of the previous drawing. A resized terminal has moved or wrapped those lines and may have
/// scrolled some away; then only clearing the whole screen removes them.
std::wstring ProgressScreen::ToBeginning(const Drawing& next) const {
    const bool hasOtherSize = next.width != drawn.width || next.height != drawn.height;
    return !drawn.lines.empty() && hasOtherSize ? L"\x1b[H\x1b[2J" : UpOver(drawn.lines.size());
}

void ProgressScreen::Redraw() {
    Drawing next = Draw();
    if (next == drawn) {
        return;
    }
    std::wstring screen = ToBeginning(next);
    for (const std::wstring& line : next.lines) {
        screen += line + L"\x1b[K\n";
    }
    screen += L"\x1b[J";
    drawn = std::move(next);
    context.console.Write(screen);
}

} // namespace front_end
