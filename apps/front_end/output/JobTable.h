#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/JobColumns.h"

#include <optional>
#include <string>
#include <vector>

namespace front_end {

/// The lines of a table of jobs with these columns. No line is longer than `width`.
std::vector<std::wstring> JobTableLines(const CommandContext& context, const std::vector<const JobRow*>& jobs,
                                        ProgressKind kind, std::optional<std::size_t> width,
                                        const std::vector<const JobColumn*>& columns = UsualJobColumns());

/// Writes a table of jobs to the console, in its width.
void WriteJobTable(CommandContext& context, const std::vector<JobRow>& jobs,
                   const std::vector<const JobColumn*>& columns = UsualJobColumns());

/// One job on one line, for a console that cannot overwrite lines.
std::wstring JobLine(const CommandContext& context, const JobRow& view);

/// The numbers of waiting, running and ended jobs.
std::wstring QueueSummary(const CommandContext& context, const std::vector<JobRow>& jobs);

/// The numbers of succeeded, failed and cancelled jobs.
std::wstring OutcomeSummary(const CommandContext& context, const std::vector<JobRow>& jobs);

/// The result messages that do not fit into the job table: all messages of a job that succeeded, and all but the first
/// of the other jobs. Further lines of a message are indented.
std::vector<std::wstring> MessageLines(const CommandContext& context, const std::vector<JobRow>& jobs);

/// The name of a status in the user's language.
std::wstring StatusText(const Texts& texts, JobStatus status);

/// An input set as shown in a table: "3.stl", or "3.stl +1" for a set of two.
std::wstring InputText(const JobListInfo& job);

/// Joins lines, each with a line end.
std::wstring JoinedLines(const std::vector<std::wstring>& lines);

} // namespace front_end
