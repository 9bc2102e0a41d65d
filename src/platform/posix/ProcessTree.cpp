#include "platform/ProcessTree.h"

#include <csignal>

#include <sys/prctl.h>
#include <sys/wait.h>

#include "platform/posix/Descendants.h"
#include "platform/posix/ExitStatus.h"
#include "platform/posix/Spawn.h"

namespace platform {
namespace {

/// Leaves it to be reaped.
void WaitForOneToEnd() {
    siginfo_t ended{};
    waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
}

/// Ends all that are below this process now; false when no child could be ended.
bool EndDescendants() {
    bool hasEndedChild = false;
    for (const Descendant& descendant : ListDescendants()) {
        const bool isEnded = kill(descendant.number, SIGKILL) == 0;
        hasEndedChild = hasEndedChild || (isEnded && descendant.isChild);
    }
    return hasEndedChild;
}

} // namespace

struct ProcessTree::State {
    OwnedHandle root;
    /// The root's number, and its group's.
    pid_t number = 0;
    /// Kept when the root is reaped with all others.
    std::optional<std::int32_t> exitCode;

    /// Reaps the children that have ended; true while there are others.
    bool ReapEnded() {
        for (;;) {
            siginfo_t ended{};
            if (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG) != 0) {
                return false;
            }
            if (ended.si_pid == 0) {
                return true;
            }
            if (ended.si_pid == number) {
                exitCode = ExitStatusOf(ended);
            }
        }
    }
};

ProcessTree::ProcessTree() : state(std::make_unique<State>()) {
    // Processes whose parent ends become children of this one instead of the system's first, whatever session they are
    // in: so all that the root ever starts stays below this process.
    prctl(PR_SET_CHILD_SUBREAPER, 1UL, 0UL, 0UL, 0UL);
}

ProcessTree::~ProcessTree() {
    End();
    prctl(PR_SET_CHILD_SUBREAPER, 0UL, 0UL, 0UL, 0UL);
}

Error ProcessTree::Start(const ProcessStart& start) {
    const Error error = Spawn(start, SpawnGroup::Own, state->root);
    state->number = error ? 0 : static_cast<pid_t>(ProcessNumber(state->root.Get()));
    return error;
}

void* ProcessTree::Root() const {
    return state->root.Get();
}

std::optional<std::int32_t> ProcessTree::RootExitCode() const {
    return state->exitCode ? state->exitCode : ExitCode(state->root.Get());
}

void ProcessTree::AskToStop() {
    // Until the root is reaped, its number and its group's are nobody else's.
    if (state->number > 0 && !state->exitCode) {
        kill(-state->number, SIGTERM);
    }
}

void ProcessTree::End() {
    if (state->number <= 0 || state->exitCode) {
        return;
    }
    // The whole group at one moment, so that none of it can start another meanwhile; then those that left the group.
    kill(-state->number, SIGKILL);
    while (state->ReapEnded() && EndDescendants()) {
        WaitForOneToEnd();
    }
}

} // namespace platform
