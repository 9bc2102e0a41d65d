#pragma once

#include "front_end/commands/CommandContext.h"

#include <string>

namespace front_end {

/// A hint to append to a message if the log may contain the reason: " The log: /home/ann/controller.log". Empty if the
/// settings name no log or it does not exist.
std::wstring LogHint(const CommandContext& context);

} // namespace front_end
