#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// What all processes of a tree may take together.
struct ResourceLimits {
    /// 0: no limit. Units: bytes.
    std::int64_t memory = 0;
    /// 100 stands for one processor core; 0: no limit.
    std::int32_t cpuPercent = 0;

    bool operator==(const ResourceLimits&) const = default;
};

/// Prepares this process for children that limit process trees (`ProcessTree::Limit`). On Linux, moves it into a group
/// of its own below its control group, if that was delegated to it: the system shares resources only between groups
/// whose parent has no processes. Returns why trees cannot be limited; empty if they can. Called once, before threads
/// and children exist.
[[nodiscard]] std::wstring PrepareResourceLimits();

} // namespace platform
