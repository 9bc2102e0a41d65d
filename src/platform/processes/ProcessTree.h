#pragma once

#include <memory>

#include "platform/processes/Process.h"

namespace platform {

/// One process with all that it starts, however deep and however detached: a job object on Windows; a process group
/// under this process as child subreaper on Linux, where every child of this process counts as part of the tree: a
/// process with a tree starts nothing else beside it, and has one tree at a time. Used by one thread.
class ProcessTree {
public:
    ProcessTree();
    /// Ends what still runs.
    ~ProcessTree();
    ProcessTree(const ProcessTree&) = delete;
    ProcessTree& operator=(const ProcessTree&) = delete;

    /// Starts the root process inside the tree: no descendant can slip out before it is watched.
    Error Start(const ProcessStart& start);

    /// The root process's handle for waiting; owned by the tree. Null before it was started.
    void* Root() const;

    /// What `ExitCode` says of the root, also after `End`.
    std::optional<std::int32_t> RootExitCode() const;

    /// Signalled when something of the tree may have ended that nobody but this process can let go of; null where the
    /// system needs no such help. `Tidy` does it: until then all that ended counts among the user's processes.
    void* Ended() const;
    void Tidy();

    /// Asks all to stop, where the system has a way (SIGTERM to the process group). Windows has none for a program
    /// without a window: nothing.
    void AskToStop();

    /// Ends every process of the tree, the root too, and returns when none is left (but such as the system does not let
    /// this user end). Windows: after 10 s at most; a killed process that waits for a driver still counts.
    void End();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace platform
