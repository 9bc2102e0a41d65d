#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/JobView.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace controller_cli {

/// Shows live how jobs get on: on a terminal a table that is drawn over, elsewhere a line a change. Jobs that had ended
/// before the first `Show` are not shown.
class ProgressScreen {
public:
    ProgressScreen(CommandContext& commandContext, const JobBoard& jobBoard);

    /// Shows the jobs as they are now. `changed`: the ids of those that have changed since the last time.
    void Show(const std::vector<std::wstring>& changed);

    /// Takes the table away; lines stay.
    void Clear();

private:
    void ShowLines(const std::vector<std::wstring>& changed);
    void Redraw();
    /// The jobs to show, as many as there is room for: active ones before those that have ended, those before waiting
    /// ones; in list order.
    std::vector<const JobView*> JobsToShow(std::size_t room) const;

    CommandContext& context;
    const JobBoard& board;
    std::set<std::wstring> endedBefore;
    std::size_t linesDrawn = 0;
};

} // namespace controller_cli
