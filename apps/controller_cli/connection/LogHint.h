#pragma once

#include "controller_cli/commands/CommandContext.h"

#include <string>

namespace controller_cli {

/// A hint to append to a message if the log may contain the reason: " The log: /home/ann/controller.log". Empty if the
/// settings name no log or it does not exist.
std::wstring LogHint(const CommandContext& context);

} // namespace controller_cli
