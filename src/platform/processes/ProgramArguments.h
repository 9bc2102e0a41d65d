#pragma once

#include <string>
#include <vector>

namespace platform {

/// The arguments of a main() after the program's own name, as text: UTF-8 on Linux (`FromUtf8`), wide from the system
/// on Windows.
std::vector<std::wstring> ProgramArguments(int count, const char* const* values);

} // namespace platform
