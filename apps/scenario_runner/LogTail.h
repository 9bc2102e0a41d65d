#pragma once

#include <string>

namespace scenario_runner {

/// The last few lines of a scenario's log, without blank lines at the beginning and end, for an error message. Empty if
/// there are none.
std::wstring ReadLogTail(const std::wstring& logPath);

/// The last lines of a text, by the same rules.
std::wstring LastLines(const std::string& text);

} // namespace scenario_runner
