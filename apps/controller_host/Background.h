#pragma once

#include "controller_host/Host.h"

/// Starts this program once more, detached from the terminal, and returns when front ends can reach it. A host that was
/// running already is as good, if they can reach that. What kept it from starting is told on standard error.
HostExit StartHostInBackground();
