#pragma once

#include <string>
#include <vector>

/// The parsed command line of the host.
struct HostOptions {
    enum class Mode { Foreground, Background, Status, Help, Version, Wrong };
    Mode mode = Mode::Foreground;
    /// The invalid argument.
    std::wstring problem = {};
    /// Passed by a host that starts this one in the background: an inherited event to raise when front ends can
    /// connect.
    std::wstring readyEvent = {};
};

HostOptions ParseHostOptions(const std::vector<std::wstring>& arguments);

extern const char hostUsage[];
