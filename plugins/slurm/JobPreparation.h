#pragma once

#include <string>

#include "slurm/Waiter.h"

namespace slurm {

/// Reads settings, run request and manifest of a job, and writes the settings for the runner into its work directory.
/// On failure returns false and sets `problem`, which names the file and the member.
[[nodiscard]] bool PrepareJob(const std::wstring& workDir, const std::wstring& name, WaiterJob& job,
                              std::wstring& problem);

} // namespace slurm
