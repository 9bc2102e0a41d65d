#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// Starts a process without a window that inherits only the handles in `start`. If `job` is not null, the process
/// belongs to that job object from its creation on: if this process is killed during the call, no child exists outside
/// the job. `errorOutput` is its standard error; null: discarded.
Error CreateChild(const ProcessStart& start, void* job, void* errorOutput, OwnedHandle& process);

} // namespace platform
