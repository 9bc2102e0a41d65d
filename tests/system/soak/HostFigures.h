#pragma once

#include <cstdint>
#include <map>
#include <string>

/// The resources that a process uses.
struct HostFigures {
    std::int64_t residentBytes = 0;
    /// Private memory not backed by files: heap and stacks.
    std::int64_t privateBytes = 0;
    int handles = 0;
    int threads = 0;
    /// Ended children that were not reaped; 0 on Windows.
    int zombies = 0;
    /// The number of handles by kind, if the system provides it.
    std::map<std::string, int> handleKinds;
};

/// The figures of a process of this user, by its handle.
HostFigures FiguresOf(void* process);
