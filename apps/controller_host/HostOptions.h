#pragma once

#include <string>
#include <vector>

/// What the command line of the host asks for.
struct HostOptions {
    enum class Mode { Foreground, Background, Status, Help, Version, Wrong };
    Mode mode = Mode::Foreground;
    /// The argument that is wrong.
    std::wstring problem = {};
    /// Given by a host that starts this one in the background: an inherited event to raise once front ends can reach
    /// it.
    std::wstring readyEvent = {};
};

HostOptions ParseHostOptions(const std::vector<std::wstring>& arguments);

extern const char hostUsage[];
