#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "front_end/commands/CommandContext.h"

#include <cstddef>
#include <string>
#include <vector>

namespace front_end {

/// Writes an error message to standard error, with the name of the program before it, on one line. Writes nothing for
/// an empty text.
void WriteProblem(CommandContext& context, const std::wstring& problem);

/// Same for texts from the host, which may contain any file name; each is written on one line.
void WriteProblems(CommandContext& context, const std::vector<std::wstring>& problems);

/// Where to find the help of this program.
std::wstring UsageHint(const CommandContext& context);

/// Why the host created no jobs for a request, or for some of its input sets: each reason once, in the order of the
/// sets. Empty if the host gave no reason.
std::vector<std::wstring> RefusalReasons(const JobEnqueueResult& result);

/// The reasons of one input set, in one text; empty if the host gave none.
std::wstring RefusalReason(const JobEnqueueResult& result, std::size_t inputSet);

} // namespace front_end
