#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/Table.h"

#include <string>
#include <vector>

namespace front_end {

enum class ProgressKind { Percent, Bar };

/// One column of a table of jobs.
struct JobColumn {
    /// As users name it.
    const wchar_t* name;
    /// The key of its heading.
    const wchar_t* textKey;
    ColumnKind kind;
    Cell (*cell)(const CommandContext& context, const JobRow& row, ProgressKind progress);
    /// True if the left job precedes the right one in a list that is sorted by this column. Null: not for sorting.
    bool (*precedes)(const ListedJob& left, const ListedJob& right);
    /// Jobs with equal text form a group. Null: not for grouping.
    std::wstring (*groupText)(const CommandContext& context, const ListedJob& job);
};

/// All columns.
const std::vector<JobColumn>& AllJobColumns();

/// The columns with these names, in the given order. Throws `UsageProblem` for an unknown name.
std::vector<const JobColumn*> JobColumnsNamed(const std::vector<std::wstring>& names);

/// The columns of a table whose user has not chosen any.
std::vector<const JobColumn*> UsualJobColumns();

/// Why a queued job waits; empty if only for its turn, and for other jobs.
std::wstring WaitText(const Texts& texts, const ListedJob& job);

/// The last column: why a job waits, its output directory, its current step or the first message of its result.
std::wstring ResultText(const Texts& texts, const JobRow& view);
/// True if that is its output directory.
bool ShowsOutputDirectory(const JobRow& view);

/// The columns of the live view of jobs: the usual ones and the time left.
std::vector<const JobColumn*> LiveJobColumns();

/// "[########............]  41 %"
std::wstring ProgressBar(std::int32_t progress);

/// "41 %"
std::wstring PercentText(std::int32_t progress);

/// "0:07", "1:02:03"; empty for a negative number.
std::wstring DurationText(std::int64_t seconds);

} // namespace front_end
