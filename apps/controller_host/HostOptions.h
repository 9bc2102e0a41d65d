#pragma once

#include <string>
#include <vector>

/// The parsed command line of the host.
struct HostOptions {
    enum class Mode { Foreground, Background, Status, Help, Version, SuperviseHook, Wrong };
    Mode mode = Mode::Foreground;
    /// The invalid argument.
    std::wstring problem = {};
    /// Passed by a host that starts this one in the background: an inherited event to raise when front ends can
    /// connect.
    std::wstring readyEvent = {};
    /// Passed by a host to the supervisor of a hook (`SupervisedHook`).
    std::vector<std::wstring> supervisedHook = {};
};

HostOptions ParseHostOptions(const std::vector<std::wstring>& arguments);

extern const char hostUsage[];
