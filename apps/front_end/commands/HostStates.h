#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/output/StateJson.h"

namespace front_end {

/// The host of the settings in use, from its lock. Asks no host.
HostState StateOfHost(const CommandContext& context);

/// One line for people.
std::wstring HostLine(const CommandContext& context);

} // namespace front_end
