#pragma once

#include <string>
#include <string_view>

#include "support/TemporaryDirectory.h"

namespace fuzz {

/// The directory of this process for readers that take a path, removed at the end of the process. Where it lies is the
/// caller's choice (TMPDIR); in memory is quickest. While it exists the settings in force name "list/job_list.json" in
/// it, and no log file. One thread.
const TemporaryDirectory& Scratch();

/// Makes the file `name` in the scratch directory hold the bytes; its path.
std::wstring ScratchFile(const std::wstring& name, std::string_view bytes);

} // namespace fuzz
