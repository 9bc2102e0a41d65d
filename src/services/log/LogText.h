#pragma once

#include <string>

namespace log_file {

/// A message as the log file holds it: valid UTF-8 on one line. Line breaks, other control characters and marks of
/// direction appear as "\n", "\r", "\t" or "\u001b", an unpaired surrogate as "\udc80".
std::string LogText(const std::wstring& message);

} // namespace log_file
