#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/JobRow.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace controller_cli {

/// Shows live how jobs get on: on a terminal a table that is drawn over, elsewhere a line a change. Jobs that had ended
/// before the first `Show` are not shown.
class ProgressScreen {
public:
    ProgressScreen(CommandContext& commandContext, const JobModel& jobBoard);

    /// Shows the jobs as they are now. `changed`: the ids of those that have changed since the last time.
    void Show(const std::vector<std::wstring>& changed);

    /// After how long to show the jobs again though none has changed: a table has running clocks, and its terminal may
    /// have got another size. Nothing: not before a change.
    std::optional<std::chrono::milliseconds> Interval() const;

    /// Takes the table away; lines stay.
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
    /// Notes the order in which jobs end.
    void NoteEnds(const std::vector<std::wstring>& changed);
    Drawing Draw() const;
    /// How to get to where the drawing begins.
    std::wstring ToBeginning(const Drawing& next) const;
    /// As many jobs as there is room for: active ones, then waiting ones in list order, then the latest ends. The
    /// waiting ones leave half of the room to the ends.
    std::vector<const JobRow*> JobsToShow(std::size_t room) const;

    CommandContext& context;
    const JobModel& board;
    std::set<std::wstring> endedBefore;
    std::map<std::wstring, std::size_t> orderOfEnds;
    Drawing drawn;
};

} // namespace controller_cli
