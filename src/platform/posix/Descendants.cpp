#include "platform/posix/Descendants.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

#include <unistd.h>

#include "platform/posix/ProcessList.h"

namespace platform {
namespace {

/// The fourth field of /proc/<number>/stat; the second one is a name in parentheses that may hold anything.
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

} // namespace

std::vector<Descendant> ListDescendants() {
    const std::multimap<pid_t, pid_t> children = ReadChildrenByParent();
    std::vector<Descendant> descendants;
    const auto append = [&](pid_t parent, bool isOwn) {
        for (auto [child, end] = children.equal_range(parent); child != end; ++child) {
            descendants.push_back({child->second, isOwn});
        }
    };
    append(getpid(), true);
    for (std::size_t index = 0; index < descendants.size(); ++index) {
        append(descendants[index].number, false);
    }
    return descendants;
}

} // namespace platform
