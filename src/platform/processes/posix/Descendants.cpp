#include "platform/processes/posix/Descendants.h"

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/processes/posix/ProcessFiles.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

std::multimap<pid_t, pid_t> ReadChildrenByParent() {
    std::multimap<pid_t, pid_t> children;
    for (const pid_t process : ListProcesses()) {
        children.emplace(ProcessStat(process).Parent(), process);
    }
    return children;
}

struct Descendant {
    pid_t number = 0;
    pid_t parent = 0;
};

/// Lists parents before their children, including zombies.
std::vector<Descendant> ListDescendants() {
    const std::multimap<pid_t, pid_t> children = ReadChildrenByParent();
    std::vector<Descendant> descendants;
    const auto append = [&](pid_t parent) {
        for (auto [child, end] = children.equal_range(parent); child != end; ++child) {
            descendants.push_back({child->second, parent});
        }
    };
    append(getpid());
    for (std::size_t index = 0; index < descendants.size(); ++index) {
        append(descendants[index].number);
    }
    return descendants;
}

/// A child's process id stays valid until this process reaps it. Other ids may have been reused since the list was
/// made, so the identity is checked again on the process that is killed.
bool EndOne(const Descendant& descendant) {
    if (descendant.parent == getpid()) {
        return kill(descendant.number, SIGKILL) == 0;
    }
    const OwnedHandle process(HandleOf(OpenProcessDescriptor(descendant.number)));
    if (process && ProcessStat(descendant.number).Parent() == descendant.parent) {
        pidfd_send_signal(DescriptorOf(process), SIGKILL, nullptr, 0);
    }
    return false;
}

/// Kills the direct children, listed in /proc/self/task/*/children: fast enough to catch processes that fork and exit
/// faster than a scan of all of /proc.
void EndChildren() {
    std::ifstream list(ProcessDirectory(getpid()) + "/task/" + std::to_string(getpid()) + "/children");
    for (pid_t child = 0; list >> child;) {
        kill(child, SIGKILL);
    }
}

/// False if no child could be killed.
bool EndAllOnce() {
    bool hasEndedChild = false;
    for (const Descendant& descendant : ListDescendants()) {
        hasEndedChild = EndOne(descendant) || hasEndedChild;
    }
    // Each pass catches about half of the processes that keep forking.
    for (int time = 0; time < 8; ++time) {
        EndChildren();
    }
    return hasEndedChild;
}

/// Waits with WNOWAIT, so that the child can still be reaped.
void WaitForOneToEnd() {
    siginfo_t ended{};
    waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
}

} // namespace

bool ReapEnded(const std::function<void(const siginfo_t&)>& onReaped) {
    for (;;) {
        siginfo_t ended{};
        if (waitid(P_ALL, 0, &ended, WEXITED | WNOHANG) != 0) {
            return false;
        }
        if (ended.si_pid == 0) {
            return true;
        }
        onReaped(ended);
    }
}

void KillDescendants(const std::function<void(const siginfo_t&)>& onReaped) {
    while (ReapEnded(onReaped) && EndAllOnce()) {
        WaitForOneToEnd();
    }
}

} // namespace platform
