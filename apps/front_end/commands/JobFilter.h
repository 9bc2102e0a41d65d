#pragma once

#include "formats/Scheduling.h"
#include "front_end/commands/Command.h"
#include "front_end/commands/CommandContext.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace front_end {

/// The conditions that a command line sets for jobs. All of them must hold.
class JobFilter {
public:
    /// Throws `UsageProblem` for a wrong value.
    JobFilter(const CommandContext& context, const Command& command);

    /// True if every job matches.
    bool IsEmpty() const;
    bool Matches(const ListedJob& job) const;

private:
    bool MatchesAge(const ListedJob& job) const;

    std::set<JobStatus> states;
    /// Units: seconds since 1970-01-01 UTC.
    std::optional<std::int64_t> latest;
    std::optional<std::int64_t> earliest;
    // In lower case.
    std::wstring scenario;
    std::wstring label;
    std::wstring text;
};

/// True if the command line has any condition of a `JobFilter`.
bool HasFilter(const Command& command);

/// The text before " : " in the name of a job's scenario: the label of the scenario's directory. Empty if there is
/// none.
std::wstring LabelOf(const JobListInfo& job);

} // namespace front_end
