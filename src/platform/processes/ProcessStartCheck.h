#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// What holds on both systems before a process is started: no text may hold U+0000, which would cut it short. On
/// success `program` is the absolute path of the file to run.
Error CheckProcessStart(const ProcessStart& start, std::wstring& program);

} // namespace platform
