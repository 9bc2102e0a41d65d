#pragma once

#include <string>
#include <vector>

namespace platform {

/// The arguments of main() after the program name: UTF-8 on Linux (`FromUtf8`), the wide command line on Windows.
std::vector<std::wstring> ProgramArguments(int count, const char* const* values);

} // namespace platform
