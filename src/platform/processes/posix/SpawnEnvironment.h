#pragma once

#include <string>
#include <vector>

#include "platform/processes/Process.h"

namespace platform {

/// The variables of a child as "NAME=value": those of this process with the differences in `start`.
std::vector<std::string> SpawnEnvironment(const ProcessStart& start);

} // namespace platform
