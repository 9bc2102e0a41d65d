#include "platform/processes/posix/Spawn.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <map>
#include <new>
#include <string_view>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/processes/Process.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

/// The variables of a child as "NAME=value": those of this process with the differences in `start`.
std::vector<std::string> SpawnEnvironment(const ProcessStart& start) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        variables.emplace(text.substr(0, text.find('=')), text);
    }
    for (const auto& [name, value] : start.environment) {
        const std::string key = text::ToUtf8(name);
        variables.erase(key);
        if (value) {
            variables.emplace(key, key + '=' + text::ToUtf8(*value));
        }
    }
    std::vector<std::string> entries;
    entries.reserve(variables.size());
    for (const auto& [name, entry] : variables) {
        entries.push_back(entry);
    }
    return entries;
}

constexpr int firstBeyondStandard = STDERR_FILENO + 1;

/// The file actions between fork and exec. They can fail only for lack of memory.
class FileActions {
public:
    FileActions() { Check(posix_spawn_file_actions_init(&actions)); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void Connect(void* output, void* errorOutput) {
        ConnectStream(output, STDOUT_FILENO);
        ConnectStream(errorOutput, STDERR_FILENO);
        Check(posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
    }

    /// Closes all other descriptors, even those that a library left without close-on-exec.
    void KeepOnly(const std::vector<void*>& inherited) {
        std::vector<int> kept;
        std::transform(inherited.begin(), inherited.end(), std::back_inserter(kept),
                       [](void* handle) { return DescriptorOf(handle); });
        std::sort(kept.begin(), kept.end());
        int next = firstBeyondStandard;
        for (const int descriptor : kept) {
            for (; next < descriptor; ++next) {
                Check(posix_spawn_file_actions_addclose(&actions, next));
            }
            // A dup2 onto itself only clears close-on-exec.
            Check(posix_spawn_file_actions_adddup2(&actions, descriptor, descriptor));
            next = std::max(next, descriptor + 1);
        }
        Check(posix_spawn_file_actions_addclosefrom_np(&actions, next));
    }

    void ChangeDirectory(const std::string& directory) {
        if (!directory.empty()) {
            Check(posix_spawn_file_actions_addchdir_np(&actions, directory.c_str()));
        }
    }

    const posix_spawn_file_actions_t* Get() const { return &actions; }

private:
    void ConnectStream(void* output, int stream) {
        const int target = DescriptorOf(output);
        if (target < 0) {
            Check(posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_WRONLY, 0));
        } else {
            Check(posix_spawn_file_actions_adddup2(&actions, target, stream));
        }
    }

    static void Check(int result) {
        if (result == ENOMEM) {
            throw std::bad_alloc();
        }
    }

    posix_spawn_file_actions_t actions{};
};

/// A child starts with no blocked and no ignored signal, whatever the threads of its parent do.
class SpawnAttributes {
public:
    explicit SpawnAttributes(int groupFlag) {
        posix_spawnattr_init(&attributes);
        sigset_t none;
        sigemptyset(&none);
        sigset_t all;
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setpgroup(&attributes, 0);
        posix_spawnattr_setflags(&attributes,
                                 static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | groupFlag));
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    const posix_spawnattr_t* Get() const { return &attributes; }

private:
    posix_spawnattr_t attributes{};
};

/// A new session includes a new process group.
int GroupFlag(const ProcessStart& start, SpawnGroup group) {
    if (start.detached) {
        return POSIX_SPAWN_SETSID;
    }
    return group == SpawnGroup::Own ? POSIX_SPAWN_SETPGROUP : 0;
}

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    std::transform(texts.begin(), texts.end(), std::back_inserter(pointers),
                   [](std::string& text) { return text.data(); });
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> SpawnArguments(const std::string& program, const ProcessStart& start) {
    std::vector<std::string> arguments{program};
    std::transform(start.arguments.begin(), start.arguments.end(), std::back_inserter(arguments), text::ToUtf8);
    return arguments;
}

/// Kills a child that cannot be watched.
Error OpenChild(pid_t child, OwnedHandle& process) {
    const int descriptor = OpenProcessDescriptor(child);
    if (descriptor < 0) {
        const Error error = LastError();
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        return error;
    }
    process = OwnedHandle(HandleOf(descriptor));
    return {};
}

} // namespace

Error Spawn(const ProcessStart& start, SpawnGroup group, void* errorOutput, OwnedHandle& process) {
    std::wstring programPath;
    if (const Error result = CheckProcessStart(start, programPath); !result) {
        return result;
    }
    FileActions actions;
    actions.Connect(start.output, errorOutput);
    actions.KeepOnly(start.inherited);
    actions.ChangeDirectory(SystemPath(start.currentDirectory));
    const SpawnAttributes attributes(GroupFlag(start, group));

    const std::string program = SystemPath(programPath);
    std::vector<std::string> arguments = SpawnArguments(program, start);
    std::vector<std::string> environment = SpawnEnvironment(start);
    pid_t child = -1;
    const int failure = posix_spawn(&child, program.c_str(), actions.Get(), attributes.Get(),
                                    PointersTo(arguments).data(), PointersTo(environment).data());
    return failure != 0 ? ErrorFromCode(failure) : OpenChild(child, process);
}

} // namespace platform
