#pragma once

#include <string>
#include <vector>

namespace front_end {

/// True for the letters of one-letter options.
bool IsOptionLetter(wchar_t letter);

/// Rewrites a command line of one-letter options for `CLIArgumentParser`, which takes "-" and "/" as the start of an
/// option. Arguments after "--" are paths: they are quoted and moved to the front. If paths begin with a slash
/// (`slashBeginsPaths`), the path after `-i`, `-l` and `-o` is attached to the letter, and other paths are quoted. An
/// argument such as "/s7", without a dot or a second slash, remains an option.
std::vector<std::wstring> PrepareShortOptionArguments(const std::vector<std::wstring>& arguments,
                                                      bool slashBeginsPaths);

} // namespace front_end
