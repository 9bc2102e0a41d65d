#pragma once

#include <string>
#include <vector>

namespace controller_cli {

/// Refuses what `CLIArgumentParser` passes over in silence: unknown options, empty arguments, a value of `-f` or `-m`
/// (which have none and would swallow the name of a file), and `-i`, `-l`, `-o` without one. Takes the arguments as the
/// parser gets them. Throws `UsageProblem`.
void RequireShortOptionUsage(const std::vector<std::wstring>& arguments);

} // namespace controller_cli
