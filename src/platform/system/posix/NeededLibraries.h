#pragma once

#include <string>
#include <vector>

namespace platform {

/// The names of the libraries that a shared library says it needs (DT_NEEDED), in their order. None for a file that is
/// no shared library of this machine.
std::vector<std::string> NeededLibraries(const std::string& systemPath);

} // namespace platform
