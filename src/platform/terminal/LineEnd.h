#pragma once

#include <string_view>

namespace platform {

/// The line end of text files on this system: "\n" on Linux, "\r\n" on Windows.
extern const std::string_view lineEnd;

} // namespace platform
