#pragma once

#include <string>
#include <vector>

namespace front_end {

/// Rejects arguments that `CLIArgumentParser` ignores silently: unknown options, empty arguments, a value of `-f` or
/// `-m` (which take none and would swallow a file name), and `-i`, `-l`, `-o` without a value. Expects the arguments as
/// the parser gets them. Throws `UsageProblem`.
void RequireShortOptionUsage(const std::vector<std::wstring>& arguments);

} // namespace front_end
