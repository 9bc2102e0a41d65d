#pragma once

#include <string>
#include <vector>

namespace controller_cli {

/// The files of one job, absolute, from the text that a person types for them. Commas part them, but for those that
/// belong to the name of a file that exists; of two such names the longer one counts.
std::vector<std::wstring> FilesOfInputSet(const std::wstring& typed);

} // namespace controller_cli
