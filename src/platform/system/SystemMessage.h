#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// The system's own words for a code (errno, GetLastError()) on one line, in English where the system has them; empty
/// when it has none.
std::wstring SystemMessage(std::int64_t systemCode);

} // namespace platform
