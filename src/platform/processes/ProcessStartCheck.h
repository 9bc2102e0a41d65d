#pragma once

#include "platform/processes/Process.h"

namespace platform {

/// Checks common to both systems before a process is started: no text may contain U+0000, which would truncate it. On
/// success, `program` is the absolute path of the file to run.
Error CheckProcessStart(const ProcessStart& start, std::wstring& program);

} // namespace platform
