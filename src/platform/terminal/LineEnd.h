#pragma once

#include <string_view>

namespace platform {

/// What ends a line in a text file of this system: "\n" on Linux, "\r\n" on Windows.
extern const std::string_view lineEnd;

} // namespace platform
