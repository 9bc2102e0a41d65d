#pragma once

#include "platform/processes/Process.h"

namespace platform {

enum class SpawnGroup { Parents, Own };

/// Starts a process with `posix_spawn`; with `SpawnGroup::Own` it leads its own process group. `errorOutput` is its
/// standard error; null: discarded.
Error Spawn(const ProcessStart& start, SpawnGroup group, void* errorOutput, OwnedHandle& process);

} // namespace platform
