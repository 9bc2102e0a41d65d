#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// Starts a process that inherits exactly what `start` names, without a window. It belongs to the job object `job` from
/// its first moment, unless that is null: if this process is ended meanwhile, there is a child in the job or none.
/// `errorOutput`: where its standard error goes; null: nowhere.
Error CreateChild(const ProcessStart& start, void* job, void* errorOutput, OwnedHandle& process);

} // namespace platform
