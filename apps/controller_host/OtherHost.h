#pragma once

#include "services/Settings.h"

#include <string>

/// Why there can be no host for these settings: another one holds their job list. Says which process it is, since when,
/// and where it listens, as far as that is known.
std::wstring OtherHostProblem(const settings::Settings& settings);

/// True while a host that holds the job list of these settings listens for front ends with the same settings, or will
/// soon, and none of these reaches it yet.
bool MayOtherHostBecomeReady(const settings::Settings& settings);

/// Waits until front ends with these settings can reach the host that holds their job list: it may be just starting, or
/// making its socket again. False when they cannot: it listens elsewhere, it does not answer, or it has ended.
bool ReachOtherHost(const settings::Settings& settings);
