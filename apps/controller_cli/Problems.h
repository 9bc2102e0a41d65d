#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "controller_cli/CommandContext.h"

#include <string>
#include <vector>

namespace controller_cli {

/// Writes why something could not be done: "controller_cli: " and the text, on a line of standard error. Nothing for an
/// empty text.
void WriteProblem(CommandContext& context, const std::wstring& problem);

/// The same for texts of the host, which may hold any file name: each stays on one line.
void WriteProblems(CommandContext& context, const std::vector<std::wstring>& problems);

/// Why the host has made no jobs of a request, or of some of its input sets: each reason once, in the order of the
/// sets. Empty where it gave no reason, or had none.
std::vector<std::wstring> RefusalReasons(const JobEnqueueResult& result);

} // namespace controller_cli
