#pragma once

#include <string_view>

#include "controller_host/Host.h"

/// Writes a text to standard output. Returns `Ended` on success and `ReaderGone` if standard output has no reader. On
/// any other failure, writes the reason to standard error and returns `WrongUse`.
HostExit Print(std::string_view text);
