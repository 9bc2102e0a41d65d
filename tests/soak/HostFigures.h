#pragma once

#include <cstdint>
#include <map>
#include <string>

/// What a process takes of the system.
struct HostFigures {
    std::int64_t residentBytes = 0;
    /// What is its own and in no file: the heap and the stacks.
    std::int64_t privateBytes = 0;
    int handles = 0;
    int threads = 0;
    /// Children that have ended and that it has not taken notice of; none on Windows.
    int zombies = 0;
    /// What the handles are, where the system tells.
    std::map<std::string, int> handleKinds;
};

/// Of a process of this user, by its handle.
HostFigures FiguresOf(void* process);
