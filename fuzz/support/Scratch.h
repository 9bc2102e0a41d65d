#pragma once

#include <string>
#include <string_view>

#include "kit/TemporaryDirectory.h"

namespace fuzz {

/// The directory of this process for readers of files, removed at process end. TMPDIR selects its place; memory is
/// fastest. While it exists, the settings in force name "list/job_list.json" in it and no log file. One thread.
const TemporaryDirectory& Scratch();

/// Writes the bytes to the file `name` in the scratch directory and returns its path.
std::wstring ScratchFile(const std::wstring& name, std::string_view bytes);

} // namespace fuzz
