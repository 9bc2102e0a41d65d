#pragma once

#include <string>
#include <string_view>

#include "platform/processes/ProcessTree.h"
#include "platform/system/Error.h"

/// Control groups of version 2 (cgroups(7)). A group is a directory of the system's; all paths here are native.
namespace platform {

/// The group of a process below the root of the groups ("/user.slice/a.service"), from the text of /proc/PID/cgroup;
/// empty if there is none.
std::string ControlGroupIn(std::string_view text);

/// The directory of this process's group; empty if the system has none of version 2.
std::string OwnControlGroup();

/// Makes `group` the parent of groups with limits: moves this process, which must be the only one in it, into a group
/// below, removes empty groups of earlier runs, and distributes memory and processor time. On failure returns false and
/// sets `problem`.
[[nodiscard]] bool ClaimControlGroup(const std::string& group, std::wstring& problem);

/// Finds the claimed group above `own`, the group of a process that the claimer has started. If groups in it cannot
/// have such limits, returns false and sets `problem`.
[[nodiscard]] bool FindClaimedGroup(const std::string& own, const ResourceLimits& limits, std::string& claimed,
                                    std::wstring& problem);

/// A group with limits for one process tree. Not thread-safe.
class ControlGroup {
public:
    ControlGroup() = default;
    /// Removes the group, unless processes are in it.
    ~ControlGroup();
    ControlGroup(const ControlGroup&) = delete;
    ControlGroup& operator=(const ControlGroup&) = delete;

    /// Creates the group of this process's number in `parent`. A memory limit includes swap space; the system kills
    /// all processes of a group that exceeds it. On failure returns false and sets `problem`.
    [[nodiscard]] bool Create(const std::string& parent, const ResourceLimits& limits, std::wstring& problem);
    bool Exists() const { return !directory.empty(); }

    /// Processes that this process starts between these calls belong to the group. `own` is its own group.
    Error Enter() const;
    Error Leave(const std::string& own) const;

    /// True if the system has killed processes of the group for their use of memory.
    bool HasExceededMemory() const;

private:
    std::string directory;
};

} // namespace platform
