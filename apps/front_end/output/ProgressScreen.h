#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/jobs/Forecast.h"
#include "front_end/jobs/JobRow.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace front_end {

/// Shows the live progress of jobs: as a redrawn table on a terminal, otherwise as one line per change. Jobs that had
/// ended before the first `Show` are not shown.
class ProgressScreen {
public:
    ProgressScreen(CommandContext& commandContext, const JobModel& jobBoard);

    /// Shows the current state. `changed` are the ids of the jobs that have changed since the last call.
    void Show(const std::vector<std::wstring>& changed);

    /// The redraw interval for unchanged jobs: a table shows running times, and its terminal may be resized. Nothing:
    /// redraw only after a change.
    std::optional<std::chrono::milliseconds> Interval() const;

    /// Removes the table; lines are kept.
    void Clear();

private:
    struct Drawing {
        std::size_t width = 0;
        std::size_t height = 0;
        std::vector<std::wstring> lines;

        bool operator==(const Drawing&) const = default;
    };

    void ShowLines(const std::vector<std::wstring>& changed);
    void Redraw();
    /// Records the order in which jobs end.
    void NoteEnds(const std::vector<std::wstring>& changed);
    Drawing Draw() const;
    /// The last line: the numbers of jobs and, as far as they fit into the width, how long the rest will take, and how
    /// far the jobs are.
    std::wstring Summary(std::size_t width) const;
    /// All jobs that had not ended before.
    std::vector<const JobRow*> JobsOfInterest() const;
    /// The control sequence that moves the cursor to the start of the drawing.
    std::wstring ToBeginning(const Drawing& next) const;
    /// Selects as many jobs as there is room for: active ones, then waiting ones in list order, then the latest ended
    /// ones. Waiting jobs leave half of the room to ended ones.
    std::vector<const JobRow*> JobsToShow(std::size_t room) const;

    CommandContext& context;
    const JobModel& board;
    std::set<std::wstring> endedBefore;
    std::map<std::wstring, std::size_t> orderOfEnds;
    Drawing drawn;
    /// When the first drawing was made, and how far the jobs were.
    std::int64_t begun;
    JobsProgress atBegin;
};

} // namespace front_end
