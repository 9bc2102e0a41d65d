#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// Same as `StartProcess`, with a separate standard error for the child; null: discarded.
[[nodiscard]] Error StartProcess(const ProcessStart& start, void* errorOutput, OwnedHandle& process);

} // namespace platform
