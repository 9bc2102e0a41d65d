#pragma once

#include <cstdint>
#include <string>

/// Starts a program with one argument. The number of the process handle (on Linux the pidfd), or 0 with `problem`. All
/// texts are UTF-8.
std::uint64_t StartProgram(const std::string& program, const std::string& argument, const std::string& directory,
                           std::string& problem);
