#pragma once

#include "platform/Process.h"

namespace platform {

enum class SpawnGroup { Parents, Own };

/// Starts a process with `posix_spawn`; with `SpawnGroup::Own` it leads a process group of its own.
Error Spawn(const ProcessStart& start, SpawnGroup group, OwnedHandle& process);

} // namespace platform
