#pragma once

#include "controller_host/HostEngine.h"

#include <cstddef>

/// Runs the engine's queue like a host without front ends, until no job is left: waits for the end of each process and
/// reads its progress file at intervals. Returns the number of successful jobs.
std::size_t RunUntilCompleted(HostEngine& engine);
