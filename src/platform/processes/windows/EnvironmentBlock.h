#pragma once

#include <string>

#include "platform/processes/Process.h"

namespace platform {

/// The variables of a child as one block, sorted as the system requires: those of this process with the differences in
/// `start`.
std::wstring EnvironmentBlock(const ProcessStart& start);

} // namespace platform
