#include "platform/processes/ProcessTree.h"

#include <csignal>
#include <utility>

#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/posix/ControlGroup.h"
#include "platform/processes/posix/Descendants.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/processes/posix/Spawn.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

/// A descriptor that becomes readable when a child of this process ends.
class EndedChildren {
public:
    EndedChildren() {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGCHLD);
        pthread_sigmask(SIG_BLOCK, &signals, &before);
        const int descriptor = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
        handle = OwnedHandle(descriptor < 0 ? nullptr : HandleOf(descriptor));
    }
    ~EndedChildren() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    EndedChildren(const EndedChildren&) = delete;
    EndedChildren& operator=(const EndedChildren&) = delete;

    void* Handle() const { return handle.Get(); }
    void Clear() const {
        signalfd_siginfo told{};
        while (read(DescriptorOf(handle.Get()), &told, sizeof told) > 0) {
        }
    }

private:
    sigset_t before{};
    OwnedHandle handle;
};

} // namespace

struct ProcessTree::State {
    EndedChildren endedChildren;
    std::unique_ptr<ControlGroup> group;
    OwnedHandle root;
    /// Process id of the root, which is also the id of its group.
    pid_t number = 0;
    /// Set when the root is reaped with the others.
    std::optional<std::int32_t> exitCode;

    void OnReaped(const siginfo_t& ended) {
        if (ended.si_pid == number) {
            exitCode = ExitStatusOf(ended);
        }
    }
};

ProcessTree::ProcessTree() : state(std::make_unique<State>()) {
    // Orphaned descendants are re-parented to this process instead of init, whatever their session: all that the root
    // starts stays below this process.
    prctl(PR_SET_CHILD_SUBREAPER, 1UL, 0UL, 0UL, 0UL);
}

ProcessTree::~ProcessTree() {
    Kill();
    prctl(PR_SET_CHILD_SUBREAPER, 0UL, 0UL, 0UL, 0UL);
}

bool ProcessTree::Limit(const ResourceLimits& limits, std::wstring& problem) {
    std::string claimed;
    auto group = std::make_unique<ControlGroup>();
    if (!FindClaimedGroup(OwnControlGroup(), limits, claimed, problem) || !group->Create(claimed, limits, problem)) {
        return false;
    }
    state->group = std::move(group);
    return true;
}

bool ProcessTree::HasExceededMemory() const {
    return state->group && state->group->HasExceededMemory();
}

Error ProcessTree::Start(const ProcessStart& start) {
    // This process stays in its own group apart from this moment, so that the tree's limits do not hold for it.
    const std::string own = state->group ? OwnControlGroup() : std::string();
    if (const Error result = state->group ? state->group->Enter() : Error{}; !result) {
        return result;
    }
    const Error result = Spawn(start, SpawnGroup::Own, start.output, state->root);
    state->number = result ? static_cast<pid_t>(ProcessNumber(state->root.Get())) : 0;
    if (state->group) {
        // On failure the limits hold for this process, too.
        (void)state->group->Leave(own);
    }
    return result;
}

void* ProcessTree::Root() const {
    return state->root.Get();
}

std::optional<std::int32_t> ProcessTree::RootExitCode() const {
    return state->exitCode ? state->exitCode : ExitCode(state->root.Get());
}

void* ProcessTree::ChildExited() const {
    return state->endedChildren.Handle();
}

void ProcessTree::ReapChildren() {
    state->endedChildren.Clear();
    siginfo_t ended{};
    // The root is not reaped here: its process id must stay valid until all others have ended.
    while (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid != 0 &&
           ended.si_pid != state->number) {
        waitid(P_PID, static_cast<id_t>(ended.si_pid), &ended, WEXITED | WNOHANG);
        ended = {};
    }
}

void ProcessTree::RequestStop() {
    // Until the root is reaped, its process id and group id cannot be reused.
    if (state->number > 0 && !state->exitCode) {
        kill(-state->number, SIGTERM);
        // A stopped process gets the signal only after it is resumed.
        kill(-state->number, SIGCONT);
    }
}

void ProcessTree::Kill() {
    if (state->number <= 0 || state->exitCode) {
        return;
    }
    // Kills the whole group at once, so that none of it can fork in between; then the processes that left the group.
    kill(-state->number, SIGKILL);
    KillDescendants([this](const siginfo_t& ended) { state->OnReaped(ended); });
}

bool PrepareResourceLimits(std::wstring& problem) {
    return ClaimControlGroup(OwnControlGroup(), problem);
}

} // namespace platform
