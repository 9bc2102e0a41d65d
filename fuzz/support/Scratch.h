#pragma once

#include <string>
#include <string_view>

#include "support/TemporaryFolder.h"

namespace fuzz {

/// The folder of this process for readers that take a path, removed at the end of the process. Where it lies is the
/// caller's choice (TMPDIR); in memory is quickest. While it exists the settings in force name "list/job_list.json" in
/// it, and no log file. One thread.
const TemporaryFolder& Scratch();

/// Makes the file `name` in the scratch folder hold the bytes; its path.
std::wstring ScratchFile(const std::wstring& name, std::string_view bytes);

} // namespace fuzz
