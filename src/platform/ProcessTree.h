#pragma once

#include "platform/Process.h"

#include <memory>

namespace platform {

/// One process with all that it starts, however deep and however detached: a job object on Windows; a process group
/// under this process as child subreaper on Linux. One tree per process at a time; used by one thread.
class ProcessTree {
public:
    ProcessTree();
    /// Ends what still runs.
    ~ProcessTree();
    ProcessTree(const ProcessTree&) = delete;
    ProcessTree& operator=(const ProcessTree&) = delete;

    /// Starts the root process inside the tree: no descendant can slip out before it is watched.
    Error Start(const ProcessStart& start);

    /// The root process's handle for waiting; owned by the tree.
    void* Root() const;

    /// Asks all to stop, where the system has a way (SIGTERM to the process group). Windows has none for a program
    /// without a window: nothing.
    void AskToStop();

    /// Ends every process of the tree and returns when none is left.
    void End();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace platform
