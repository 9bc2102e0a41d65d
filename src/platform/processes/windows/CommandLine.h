#pragma once

#include <string>
#include <vector>

namespace platform {

/// Builds a command line from a program and its arguments, quoted so that the C runtime of the child
/// (`CommandLineToArgvW`) reads back exactly these arguments.
std::wstring BuildCommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments);

} // namespace platform
