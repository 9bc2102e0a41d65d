#pragma once

#include <string_view>

#include "controller_host/Host.h"

/// Writes a text to standard output. `Ended` when it is there; `ReaderGone` when nobody reads it, and `WrongUse`, told
/// on standard error, when it cannot be written.
HostExit Print(std::string_view text);
