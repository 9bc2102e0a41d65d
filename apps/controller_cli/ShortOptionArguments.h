#pragma once

#include <string>
#include <vector>

namespace controller_cli {

/// True for the letters that an option of one letter may have.
bool IsOptionLetter(wchar_t letter);

/// Rewrites a command line of one-letter options for `CLIArgumentParser`, to which "-" and "/" begin an option. Behind
/// "--" every argument is a path: it comes first, in quotes. Where paths begin with a slash (`slashBeginsPaths`), the
/// path behind `-i`, `-l` and `-o` is attached to the letter, and a path that stands alone is put in quotes. "/s7" and
/// the like, without a dot or a second slash, stay options.
std::vector<std::wstring> PrepareShortOptionArguments(const std::vector<std::wstring>& arguments,
                                                      bool slashBeginsPaths);

} // namespace controller_cli
