#include "platform/processes/posix/ControlGroup.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <vector>

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

/// The group of the process that has claimed the group above.
constexpr std::string_view claimerName = "/controller_host";
constexpr std::string_view runPrefix = "job-";

std::string ReadGroupFile(const std::string& path) {
    constexpr std::size_t longest = 65536;
    std::string text;
    // A file that cannot be read offers nothing.
    (void)ReadFile(LibraryPath(path), longest, text);
    return text;
}

Error WriteGroupFile(const std::string& path, std::string_view text) {
    const OwnedFileHandle file = OpenDescriptor(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW, 0600);
    if (!file) {
        return LastError();
    }
    return OutcomeOf(static_cast<int>(write(DescriptorOf(file), text.data(), text.size())));
}

std::vector<std::string> Words(const std::string& text) {
    std::vector<std::string> words;
    for (std::size_t begin = text.find_first_not_of(" \n"); begin != std::string::npos;) {
        const std::size_t end = std::min(text.find_first_of(" \n", begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(" \n", end);
    }
    return words;
}

bool Contains(const std::string& file, const std::string& word) {
    const std::vector<std::string> words = Words(ReadGroupFile(file));
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Of runners that were killed. The system refuses to remove a group with processes.
void RemoveEmptyGroups(const std::string& parent) {
    const DirectoryListing listing = OpenListing(AT_FDCWD, parent.c_str(), O_RDONLY | O_DIRECTORY);
    while (const dirent* const entry = listing ? readdir(listing.get()) : nullptr) {
        const std::string name = static_cast<const char*>(entry->d_name);
        if (name.starts_with(runPrefix)) {
            unlinkat(dirfd(listing.get()), name.c_str(), AT_REMOVEDIR);
        }
    }
}

/// Sets `problem` and returns false unless the call succeeded.
[[nodiscard]] bool Check(const Error& result, const std::string& path, std::wstring& problem) {
    if (!result) {
        problem = text::FromUtf8(path) + L": " + result.Text();
    }
    return static_cast<bool>(result);
}

[[nodiscard]] bool CheckClaimable(const std::string& group, std::wstring& problem) {
    if (group.empty()) {
        problem = L"this system has no control groups of version 2";
    } else if (!Contains(group + "/cgroup.controllers", "memory")) {
        problem = L"the control group " + text::FromUtf8(group) + L" does not control memory";
    } else if (Words(ReadGroupFile(group + "/cgroup.procs")) != std::vector{std::to_string(getpid())}) {
        problem = L"the control group " + text::FromUtf8(group) + L" was not made for the host alone";
    } else {
        return true;
    }
    return false;
}

} // namespace

std::string ControlGroupIn(std::string_view text) {
    constexpr std::string_view mark = "0::/";
    const std::size_t begin = text.starts_with(mark) ? 0 : text.find("\n0::/");
    if (begin == std::string_view::npos) {
        return {};
    }
    const std::size_t path = text.find('/', begin);
    return std::string(text.substr(path, text.find('\n', path) - path));
}

std::string OwnControlGroup() {
    const std::string group = ControlGroupIn(ReadGroupFile("/proc/self/cgroup"));
    for (const char* const root : {"/sys/fs/cgroup", "/sys/fs/cgroup/unified"}) {
        struct statfs status {};
        if (!group.empty() && statfs(root, &status) == 0 && status.f_type == CGROUP2_SUPER_MAGIC) {
            return group == "/" ? root : root + group;
        }
    }
    return {};
}

bool ClaimControlGroup(const std::string& group, std::wstring& problem) {
    if (!CheckClaimable(group, problem)) {
        return false;
    }
    const std::string own = group + std::string(claimerName);
    const bool isThere = mkdir(own.c_str(), 0700) == 0 || errno == EEXIST;
    if (!Check(isThere ? Error{} : LastError(), own, problem) ||
        !Check(WriteGroupFile(own + "/cgroup.procs", "0"), own, problem)) {
        return false;
    }
    RemoveEmptyGroups(group);
    const std::string share = group + "/cgroup.subtree_control";
    // Often a service has no processor time to distribute; then only memory can be limited.
    (void)WriteGroupFile(share, "+cpu");
    return Check(WriteGroupFile(share, "+memory"), share, problem);
}

bool FindClaimedGroup(const std::string& own, const ResourceLimits& limits, std::string& claimed,
                      std::wstring& problem) {
    if (!own.ends_with(claimerName)) {
        problem = L"the host has no control group of its own, such as that of a service with \"Delegate=yes\"";
        return false;
    }
    const std::string group = own.substr(0, own.size() - claimerName.size());
    for (const auto& [isNeeded, controller] :
         {std::pair(limits.memory > 0, "memory"), {limits.cpuPercent > 0, "cpu"}}) {
        if (isNeeded && !Contains(group + "/cgroup.subtree_control", controller)) {
            problem = L"the control group " + text::FromUtf8(group) + L" does not distribute \"" +
                      text::FromUtf8(controller) + L"\"";
            return false;
        }
    }
    claimed = group;
    return true;
}

ControlGroup::~ControlGroup() {
    if (Exists()) {
        rmdir(directory.c_str());
    }
}

bool ControlGroup::Create(const std::string& parent, const ResourceLimits& limits, std::wstring& problem) {
    const std::string path = parent + '/' + std::string(runPrefix) + std::to_string(getpid());
    // A runner that had the same number may have left it.
    rmdir(path.c_str());
    if (!Check(OutcomeOf(mkdir(path.c_str(), 0700)), path, problem)) {
        return false;
    }
    directory = path;
    if (limits.memory > 0) {
        if (!Check(WriteGroupFile(path + "/memory.max", std::to_string(limits.memory)), path, problem)) {
            return false;
        }
        // Systems without swap space have no such file.
        (void)WriteGroupFile(path + "/memory.swap.max", "0");
        // Before Linux 4.19 the system kills one process instead.
        (void)WriteGroupFile(path + "/memory.oom.group", "1");
    }
    if (limits.cpuPercent > 0) {
        // Microseconds of processor time in each period of 100 ms.
        const std::string quota = std::to_string(std::int64_t{limits.cpuPercent} * 1000) + " 100000";
        return Check(WriteGroupFile(path + "/cpu.max", quota), path, problem);
    }
    return true;
}

Error ControlGroup::Enter() const {
    return WriteGroupFile(directory + "/cgroup.procs", "0");
}

Error ControlGroup::Leave(const std::string& own) const {
    return WriteGroupFile(own + "/cgroup.procs", "0");
}

bool ControlGroup::HasExceededMemory() const {
    const std::vector<std::string> words = Words(ReadGroupFile(directory + "/memory.events"));
    const auto name = std::find(words.begin(), words.end(), "oom_kill");
    return name != words.end() && name + 1 != words.end() && *(name + 1) != "0";
}

} // namespace platform
