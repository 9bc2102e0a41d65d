#pragma once

#include "services/Settings.h"

#include <string>

/// Why no host can run with these settings: another one holds their job list. Names its process, start time and
/// endpoint as far as known.
std::wstring OtherHostProblem(const settings::Settings& settings);

/// True while a host that holds the job list of these settings uses the same endpoint but is not reachable yet.
bool MayOtherHostBecomeReady(const settings::Settings& settings);

/// Waits until front ends with these settings can reach the host that holds their job list: it may be starting, or
/// recreating its socket. Returns false if they cannot: it uses another endpoint, does not answer, or has ended.
bool ReachOtherHost(const settings::Settings& settings);
