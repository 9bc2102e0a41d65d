#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// As `StartProcess`, with the child's standard error at another place than its standard output; null: nowhere.
[[nodiscard]] Error StartProcess(const ProcessStart& start, void* errorOutput, OwnedHandle& process);

} // namespace platform
