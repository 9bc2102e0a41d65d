#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The system's text for a code (errno, GetLastError()) on one line, in English if available; empty if there is none.
std::wstring SystemMessage(std::int64_t systemCode);

} // namespace platform
