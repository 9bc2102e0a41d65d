#include "platform/processes/ForkServer.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/processes/Waiting.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

constexpr std::size_t longestRequest = 8192;
/// Only a server that was stopped takes longer.
constexpr std::chrono::seconds timeout{2};

/// The process id of a copy; 0 if none has announced itself.
pid_t Received(int descriptor) {
    pid_t copy = 0;
    return recv(descriptor, &copy, sizeof copy, MSG_DONTWAIT) == sizeof copy ? copy : 0;
}

/// A copy that cannot announce itself ends. So after the shutdown it is certain whether there is one.
pid_t AwaitAnnouncement(void* line) {
    const int descriptor = DescriptorOf(line);
    WaitForAny({line}, timeout);
    if (const pid_t copy = Received(descriptor)) {
        return copy;
    }
    shutdown(descriptor, SHUT_RDWR);
    return Received(descriptor);
}

bool Announce(int descriptor, pid_t copy) {
    return send(descriptor, &copy, sizeof copy, MSG_NOSIGNAL) == sizeof copy;
}

/// The copy of a server is a child of the server's parent.
pid_t ForkForParent() {
    return static_cast<pid_t>(syscall(SYS_clone, CLONE_PARENT | SIGCHLD, nullptr, nullptr, nullptr, 0UL));
}

/// Announces itself before and after it leaves the process group of the server, so that the server's parent reaps every
/// copy that ends here: it finds it in that group, or knows its process id.
void BeginCopy(int descriptor, bool isPrepared) {
    const bool isKnown = Announce(descriptor, isPrepared ? getpid() : 0) && isPrepared;
    // A child of the fork leads no group, so that this cannot fail.
    if (!isKnown || setsid() < 0 || !Announce(descriptor, getpid())) {
        _exit(EXIT_FAILURE);
    }
}

/// Kills a copy that has not begun or cannot be watched.
OwnedHandle OpenCopy(pid_t copy, bool hasBegun) {
    OwnedHandle handle(hasBegun ? HandleOf(OpenProcessDescriptor(copy)) : nullptr);
    if (!handle) {
        kill(copy, SIGKILL);
        waitpid(copy, nullptr, 0);
    }
    return handle;
}

/// Waits until the process can be reaped, which is later than its end while a debugger or leak checker traces it. It
/// keeps its process id, which is that of its group.
void AwaitEnd(const OwnedHandle& process) {
    siginfo_t ended{};
    while (waitid(P_PIDFD, static_cast<id_t>(DescriptorOf(process)), &ended, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

void KillAndReapGroup(pid_t group) {
    // Group 0 would be the one of this process.
    if (group == 0) {
        return;
    }
    kill(-group, SIGKILL);
    siginfo_t ended{};
    while (waitid(P_PGID, static_cast<id_t>(group), &ended, WEXITED) == 0 || errno == EINTR) {
    }
}

/// False if there will be no further request.
bool Receive(const OwnedHandle& line, void* owner, std::chrono::milliseconds longestRest, std::string& request) {
    if (WaitForAny({line.Get(), owner}, longestRest) != std::size_t{0}) {
        return false;
    }
    request.resize(longestRequest);
    const ssize_t count = recv(DescriptorOf(line), request.data(), request.size(), 0);
    request.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

} // namespace

ForkServer::~ForkServer() {
    End();
}

Error ForkServer::Start(ProcessStart start) {
    End();
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
        return LastError();
    }
    line = OwnedHandle(HandleOf(ends[0]));
    const OwnedHandle far(HandleOf(ends[1]));
    start.arguments.push_back(InheritedHandleText(far.Get()));
    start.inherited.push_back(far.Get());
    start.detached = true;
    const Error result = StartProcess(start, process);
    return result ? StartReaper() : result;
}

Error ForkServer::StartReaper() {
    const auto group = static_cast<pid_t>(ProcessNumber(process.Get()));
    try {
        reaper = std::thread([this, group, server = OwnedHandle(CopyHandle(process.Get()))] { Reap(server, group); });
        return {};
    } catch (const std::system_error& failure) {
        pidfd_send_signal(DescriptorOf(process), SIGKILL, nullptr, 0);
        Reap(process, group);
        return ErrorFromCode(failure.code().value());
    }
}

void ForkServer::Reap(const OwnedHandle& server, std::int32_t group) {
    AwaitEnd(server);
    const std::lock_guard lock(mutex);
    KillAndReapGroup(group);
    line = OwnedHandle();
    process = OwnedHandle();
}

bool ForkServer::IsRunning() const {
    const std::lock_guard lock(mutex);
    return process && IsProcessRunning(process.Get());
}

OwnedHandle ForkServer::Fork(const std::string& request) {
    OwnedHandle handle = ForkCopy(request);
    if (!handle) {
        End();
    }
    return handle;
}

OwnedHandle ForkServer::ForkCopy(const std::string& request) {
    const std::lock_guard lock(mutex);
    const bool isSent = line && request.size() <= longestRequest &&
                        send(DescriptorOf(line), request.data(), request.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
                            static_cast<ssize_t>(request.size());
    // The process id of a child is not used again before it is reaped.
    const pid_t copy = isSent ? AwaitAnnouncement(line.Get()) : 0;
    return copy > 0 ? OpenCopy(copy, AwaitAnnouncement(line.Get()) == copy) : OwnedHandle();
}

void ForkServer::End() {
    {
        const std::lock_guard lock(mutex);
        line = OwnedHandle();
        if (process) {
            pidfd_send_signal(DescriptorOf(process), SIGKILL, nullptr, 0);
        }
    }
    if (reaper.joinable()) {
        reaper.join();
    }
    process = OwnedHandle();
}

std::optional<std::string> ServeForks(const OwnedHandle& line, void* owner, std::chrono::milliseconds longestRest,
                                      const std::function<bool(const std::string& request)>& prepare) {
    for (std::string request; Receive(line, owner, longestRest, request);) {
        const pid_t copy = ForkForParent();
        if (copy == 0) {
            BeginCopy(DescriptorOf(line), prepare(request));
            return request;
        }
        if (copy < 0) {
            break;
        }
    }
    return std::nullopt;
}

bool OverwriteStartVariable(const std::wstring& name, const std::wstring& value) {
    // Unlike a variable that was set later, one of the start is in the memory that the system shows.
    char* const place = std::getenv(text::ToUtf8(name).c_str());
    const std::string bytes = text::ToUtf8(value);
    if (place == nullptr || std::strlen(place) < bytes.size()) {
        return false;
    }
    std::memset(place, 0, std::strlen(place));
    bytes.copy(place, bytes.size());
    return true;
}

} // namespace platform
