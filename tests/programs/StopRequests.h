#pragma once

/// From now on a polite request to stop is ignored, where the system has one (SIGTERM).
void IgnoreStopRequests();
