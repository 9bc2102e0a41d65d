#pragma once

#include "controller_host/HostEngine.h"

#include <cstddef>

/// Runs the engine's queue as a host without front ends would, until nothing is left to do: it waits for the end of
/// each process, and while one runs for the time to look at its progress file again. Returns how many jobs succeeded.
std::size_t RunUntilCompleted(HostEngine& engine);
