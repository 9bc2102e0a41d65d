#pragma once

#include <string>

namespace scenario_runner {

/// The last lines of a scenario's log, for a message about its failure: not many, without blank ones at the beginning
/// and the end. Empty when there are none.
std::wstring ReadLogTail(const std::wstring& logPath);

/// The last lines of a text, by the same rules.
std::wstring LastLines(const std::string& text);

} // namespace scenario_runner
