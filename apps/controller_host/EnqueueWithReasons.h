#pragma once

#include "controller_host/HostEngine.h"

/// Makes the jobs of a request as the engine does, and says in words why an input set gets none: its element of
/// `inputSetResults` then holds one text. A request that is refused as a whole has the same text for every set; one
/// without input sets has one element for the text alone. Each reason is logged, too. What would lead the engine out of
/// the output directory is refused. `request` is changed on the way.
JobEnqueueResult EnqueueWithReasons(HostEngine& engine, EnqueueJobsInfo& request);
