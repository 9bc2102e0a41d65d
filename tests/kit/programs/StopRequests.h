#pragma once

/// After this, SIGTERM is ignored, on systems that have it.
void IgnoreStopRequests();
