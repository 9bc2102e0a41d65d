#pragma once

#include "platform/processes/Process.h"

namespace platform {

enum class SpawnGroup { Parents, Own };

/// Starts a process with `posix_spawn`; with `SpawnGroup::Own` it leads a process group of its own. `errorOutput`:
/// where its standard error goes; null: nowhere.
Error Spawn(const ProcessStart& start, SpawnGroup group, void* errorOutput, OwnedHandle& process);

} // namespace platform
