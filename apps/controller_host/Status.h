#pragma once

#include "controller_host/Host.h"

/// Prints whether a host runs for the job list of the settings, its process, start time and endpoint, and one line for
/// each problem that would make jobs fail: modules, runner, interpreters. Returns `Ended` if a host runs and there is
/// no problem, otherwise `CouldNotRun`.
HostExit PrintHostStatus();
