#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/JobRow.h"

#include <optional>
#include <string>
#include <vector>

namespace controller_cli {

enum class ProgressKind { Percent, Bar };

/// The lines of the table of jobs: number, state, progress, scenario, input, time, and where the output is, or what the
/// scenario says. No line is longer than `width`.
std::vector<std::wstring> JobTableLines(const CommandContext& context, const std::vector<const JobRow*>& jobs,
                                        ProgressKind kind, std::optional<std::size_t> width);

/// Writes the table of jobs to the console, as wide as that is.
void WriteJobTable(CommandContext& context, const std::vector<JobRow>& jobs);

/// One job on one line: for a console that cannot draw over what it shows.
std::wstring JobLine(const CommandContext& context, const JobRow& view);

/// How many jobs wait, run, have ended.
std::wstring QueueSummary(const CommandContext& context, const std::vector<JobRow>& jobs);

/// How many jobs succeeded, failed and were cancelled.
std::wstring OutcomeSummary(const CommandContext& context, const std::vector<JobRow>& jobs);

/// The messages of results that the table of jobs has no room for: all of a job that succeeded, the second and later
/// ones of others. Further lines of a message are indented.
std::vector<std::wstring> MessageLines(const CommandContext& context, const std::vector<JobRow>& jobs);

/// The name of a status in the person's language.
std::wstring StatusText(const Texts& texts, JobStatus status);

/// "3.stl", or "3.stl +1" for a set of two: an input set as a table shows it.
std::wstring InputText(const JobListInfo& job);

/// Lines joined, each ended.
std::wstring JoinedLines(const std::vector<std::wstring>& lines);

} // namespace controller_cli
