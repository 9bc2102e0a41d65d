#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/processes/Process.h"

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
/// whose parent has no processes. If trees cannot be limited, returns false and sets `problem`. Called once, before
/// threads and children exist.
[[nodiscard]] bool PrepareResourceLimits(std::wstring& problem);

/// One process and all its descendants, however deep and however detached. On Windows, a job object. On Linux, a
/// process group below this process as child subreaper; every child of this process counts as part of the tree. Hence a
/// process has at most one tree at a time and starts nothing else beside it. Not thread-safe.
class ProcessTree {
public:
    ProcessTree();
    /// Kills the processes that still run.
    ~ProcessTree();
    ProcessTree(const ProcessTree&) = delete;
    ProcessTree& operator=(const ProcessTree&) = delete;

    /// Limits what the tree may take; called before `Start`. If the system does not offer that, returns false and sets
    /// `problem`; the tree can then be started without these limits. Needs a parent that called
    /// `PrepareResourceLimits`.
    [[nodiscard]] bool Limit(const ResourceLimits& limits, std::wstring& problem);

    /// True if processes of the tree were killed because they exceeded the memory limit. Never on Windows, where their
    /// allocations fail instead.
    bool HasExceededMemory() const;

    /// Starts the root process inside the tree, so that no descendant can escape before the tree watches it.
    Error Start(const ProcessStart& start);

    /// The root process's handle for waiting, owned by the tree. Null before the start.
    void* Root() const;

    /// `ExitCode` of the root, also after `Kill`.
    std::optional<std::int32_t> RootExitCode() const;

    /// Signalled when a process of the tree that only this process can reap may have ended; null if the system needs no
    /// reaping. `ReapChildren` reaps it: until then, ended processes count against the user's process limit.
    void* ChildExited() const;
    void ReapChildren();

    /// Asks all processes to stop (SIGTERM to the process group). No effect on Windows, which has no such request for a
    /// program without a window.
    void RequestStop();

    /// Kills all processes of the tree including the root, and returns when none is left, apart from those that this
    /// user may not kill. On Windows, returns after at most 10 s: a killed process that waits for a driver still
    /// exists.
    void Kill();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace platform
