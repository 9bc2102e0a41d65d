#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "controller_cli/commands/CommandContext.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Writes an error message to standard error, with the prefix "controller_cli: ", on one line. Writes nothing for an
/// empty text.
void WriteProblem(CommandContext& context, const std::wstring& problem);

/// Same for texts from the host, which may contain any file name; each is written on one line.
void WriteProblems(CommandContext& context, const std::vector<std::wstring>& problems);

/// Why the host created no jobs for a request, or for some of its input sets: each reason once, in the order of the
/// sets. Empty if the host gave no reason.
std::vector<std::wstring> RefusalReasons(const JobEnqueueResult& result);

} // namespace controller_cli
