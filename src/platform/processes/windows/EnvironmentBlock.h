#pragma once

#include <string>

#include "platform/processes/Process.h"

namespace platform {

/// The variables of a child as one block, sorted as the system wants it: this process's own with the differences that
/// `start` names.
std::wstring EnvironmentBlock(const ProcessStart& start);

} // namespace platform
