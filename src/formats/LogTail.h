#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

namespace run_protocol {

/// The last few lines of a scenario's log, without blank lines at the beginning and end, for an error message. Empty if
/// there are none.
CONTROLLER_API std::wstring ReadLogTail(const std::wstring& logPath);

/// The last lines of a text, by the same rules.
CONTROLLER_API std::wstring LastLines(const std::string& text);

} // namespace run_protocol
