#pragma once

#include "controller_web/RunWeb.h"

namespace web {

/// Starts this program again, detached from the terminal, and prints a one-time link when the page can be opened. A
/// server that runs already is used.
WebExit StartInBackground(const WebOptions& options);

} // namespace web
