#pragma once

#include "controller_cli/CommandContext.h"

#include <string>

namespace controller_cli {

/// What a message ends with whose reason a log may tell: " The log: /home/ann/controller.log". Nothing where the
/// settings name no log or there is none.
std::wstring LogHint(const CommandContext& context);

} // namespace controller_cli
