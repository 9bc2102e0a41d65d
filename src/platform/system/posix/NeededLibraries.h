#pragma once

#include <string>
#include <vector>

namespace platform {

/// The names of the libraries that a shared library needs (DT_NEEDED), in order. Empty for a file that is not a shared
/// library of this machine.
std::vector<std::string> NeededLibraries(const std::string& systemPath);

} // namespace platform
