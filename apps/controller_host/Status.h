#pragma once

#include "controller_host/Host.h"

/// Prints whether a host runs for the job list of the settings, which process it is, since when and where it listens,
/// and a line for each thing for which jobs of these settings would fail: modules, runner, interpreters. `Ended` when a
/// host runs and nothing is amiss, otherwise `CouldNotRun`.
HostExit PrintHostStatus();
