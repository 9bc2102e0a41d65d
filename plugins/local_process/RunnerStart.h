#pragma once

#include <string>

#include "formats/RunProtocol.h"
#include "platform/processes/ProcessHandle.h"
#include "services/Settings.h"

namespace local_process {

/// Starts the program that runs one scenario, detached from this process's terminal. It inherits nothing but a handle
/// to this process, to notice its end. False, with `problem`, when it cannot be started.
[[nodiscard]] bool StartRunner(const run_protocol::RunScenarioInfo& info, const settings::Settings& settings,
                               platform::OwnedHandle& runner, std::wstring& problem);

} // namespace local_process
