#pragma once

#include "controller_host/Host.h"

/// Starts this program again, detached from the terminal, and returns when front ends can reach it. An already running
/// host that they can reach is a success, too. On failure, writes the reason to standard error.
HostExit StartHostInBackground();
