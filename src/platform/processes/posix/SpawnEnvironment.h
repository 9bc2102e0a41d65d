#pragma once

#include <string>
#include <vector>

#include "platform/processes/Process.h"

namespace platform {

/// The variables of a child as "NAME=value": this process's own with the differences that `start` names.
std::vector<std::string> SpawnEnvironment(const ProcessStart& start);

} // namespace platform
