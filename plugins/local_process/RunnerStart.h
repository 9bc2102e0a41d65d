#pragma once

#include <string>

#include "formats/RunProtocol.h"
#include "platform/system/OwnedHandle.h"
#include "services/Settings.h"

namespace local_process {

/// Starts the runner program, detached from this process's terminal. It inherits only a handle to this process, by
/// which it notices this process's end. On failure, returns false and sets `problem`.
[[nodiscard]] bool StartRunner(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                               platform::OwnedHandle& runner, std::wstring& problem);

} // namespace local_process
