#pragma once

#include <string>
#include <vector>

namespace front_end {

/// Splits the text of one job's input files into absolute paths. The separator is a comma, unless it is part of the
/// name of an existing file; of two such names the longer one is used.
std::vector<std::wstring> FilesOfInputSet(const std::wstring& typed);

} // namespace front_end
