#pragma once

#include "controller_host/HostEngine.h"

/// Creates the jobs of a request like the engine does, and adds the reason why an input set gets none: its element of
/// `inputSetResults` then contains one text. A request that is rejected as a whole has the same text for every set; one
/// without input sets has one element with the text only. Each reason is also logged. Input sets whose results would be
/// outside the output directory are rejected, and requests that cannot be scheduled
/// (`HostEngine::ResolveScheduling`). Modifies `request`.
JobEnqueueResult EnqueueWithReasons(HostEngine& engine, ScheduledRequest& request);
