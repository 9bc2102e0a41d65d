#pragma once

#include <string>
#include <vector>

namespace platform {

/// One command line for a program and its arguments, quoted so that the C runtime of the child (`CommandLineToArgvW`)
/// reads exactly these arguments back.
std::wstring BuildCommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments);

} // namespace platform
