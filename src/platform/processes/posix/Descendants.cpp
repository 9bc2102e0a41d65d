#include "platform/processes/posix/Descendants.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

/// The parent id, field 4 of /proc/<pid>/stat. Field 2 is a name in parentheses that may contain any characters.
pid_t ParentOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    const std::size_t nameEnd = text.rfind(')');
    constexpr std::size_t stateFieldLength = 4; // ") S "
    return nameEnd == std::string::npos || nameEnd + stateFieldLength >= text.size()
               ? 0
               : static_cast<pid_t>(std::strtol(text.c_str() + nameEnd + stateFieldLength, nullptr, 10));
}

std::multimap<pid_t, pid_t> ReadChildrenByParent() {
    std::multimap<pid_t, pid_t> children;
    for (const pid_t process : ListProcesses()) {
        children.emplace(ParentOf(process), process);
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
    if (process && ParentOf(descendant.number) == descendant.parent) {
        pidfd_send_signal(DescriptorOf(process), SIGKILL, nullptr, 0);
    }
    return false;
}

/// Kills the direct children, listed in /proc/self/task/*/children: fast enough to catch processes that fork and exit
/// faster than a scan of all of /proc.
void EndChildren() {
    const std::string self = std::to_string(getpid());
    std::ifstream list("/proc/" + self + "/task/" + self + "/children");
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

std::vector<pid_t> ListProcesses() {
    std::vector<pid_t> processes;
    const DirectoryListing directory(opendir("/proc"));
    while (const dirent* const entry = directory ? readdir(directory.get()) : nullptr) {
        if (std::string_view(entry->d_name).find_first_not_of("0123456789") == std::string_view::npos) {
            processes.push_back(static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10)));
        }
    }
    return processes;
}

} // namespace platform
