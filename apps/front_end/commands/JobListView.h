#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"
#include "front_end/output/JobColumns.h"

#include <cstddef>
#include <string>
#include <vector>

namespace front_end {

/// How many of the newest jobs a terminal shows unless the user asks for more.
inline constexpr std::size_t usualLimit = 50;

/// How the user of a list wants to see it: order, columns, groups and number of jobs.
class JobListView {
public:
    /// Throws `UsageProblem` for a wrong value.
    JobListView(const CommandContext& context, const Command& command);

    /// True if the list is shown as the host has it.
    bool IsPlain() const { return sortColumn == nullptr && !isReversed && limit == 0; }

    /// Sorts the jobs and drops those beyond the limit: without an order of its own the oldest ones. Returns the number
    /// of dropped jobs.
    std::size_t Arrange(std::vector<ListedJob>& jobs) const;

    /// Writes the jobs as one table, or as one for each group.
    void Write(CommandContext& context, const std::vector<ListedJob>& jobs) const;

private:
    void WriteGroups(CommandContext& context, const std::vector<ListedJob>& jobs) const;

    std::vector<const JobColumn*> columns;
    const JobColumn* sortColumn = nullptr;
    const JobColumn* groupColumn = nullptr;
    bool isReversed;
    /// 0: none.
    std::size_t limit = 0;
};

} // namespace front_end
