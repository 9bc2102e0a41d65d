#include "platform/posix/Descendants.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include <dirent.h>
#include <unistd.h>

namespace platform {
namespace {

/// The fourth field of /proc/<number>/stat; the second one is a name in parentheses that may hold anything.
pid_t ParentOf(const std::string& number) {
    std::ifstream file("/proc/" + number + "/stat");
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
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc"), closedir);
    while (const dirent* const entry = folder ? readdir(folder.get()) : nullptr) {
        const std::string name = entry->d_name;
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            children.emplace(ParentOf(name), static_cast<pid_t>(std::strtol(name.c_str(), nullptr, 10)));
        }
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
