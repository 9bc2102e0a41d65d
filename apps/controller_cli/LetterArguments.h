#pragma once

#include <string>
#include <vector>

namespace controller_cli {

/// Rewrites a command line of one-letter options for `CLIArgumentParser`, to which a slash begins an option: where
/// paths begin with one (`slashBeginsPaths`), the path behind `-i`, `-l` and `-o` is attached to the letter, and a path
/// that stands alone is put in quotes. "/s7" and the like, without a dot or a second slash, stay options.
std::vector<std::wstring> PrepareLetterArguments(const std::vector<std::wstring>& arguments, bool slashBeginsPaths);

} // namespace controller_cli
