#include "transport/local_socket/posix/EndpointAddress.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Environment.h"
#include "platform/system/Error.h"
#include "platform/system/Sleep.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace local_socket {
namespace {

constexpr mode_t permissionBits = 07777;

std::wstring Failure(const std::wstring& what, const std::string& path, const std::wstring& why) {
    return what + L" " + text::FromUtf8(path) + L": " + why;
}

std::wstring SystemFailure(const std::wstring& what, const std::string& path) {
    return Failure(what, path, platform::LastError().Text());
}

std::string OwnSocketDirectory() {
    std::optional<std::string> runtimeDirectory;
    if (const std::optional<std::wstring> value = platform::GetEnvironment(L"XDG_RUNTIME_DIR")) {
        runtimeDirectory = text::ToUtf8(*value);
    }
    return SocketDirectory(runtimeDirectory, geteuid());
}

constexpr std::string_view socketEnding = ".socket";
constexpr std::string_view lockEnding = ".lock";

std::string DirectoryOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

std::string LockBeside(const std::string& socketPath) {
    return socketPath.substr(0, socketPath.size() - socketEnding.size()).append(lockEnding);
}

/// Returns nothing if the path is too long for a socket.
std::optional<sockaddr_un> AddressOf(const std::string& path) {
    sockaddr_un address{};
    if (path.size() >= sizeof(address.sun_path)) {
        return std::nullopt;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

std::wstring TooLong(const std::string& path) {
    return Failure(L"the socket", path,
                   L"the path has " + std::to_wstring(path.size()) + L" bytes, at most " +
                       std::to_wstring(sizeof(sockaddr_un{}.sun_path) - 1) +
                       L" are possible; use a shorter name or a shorter XDG_RUNTIME_DIR");
}

platform::OwnedHandle NewSocket(int flags) {
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0);
    return descriptor < 0 ? platform::OwnedHandle() : platform::OwnedHandle(platform::HandleOf(descriptor));
}

/// The socket functions take addresses of all families as a pointer to the generic type.
const sockaddr* General(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

std::wstring BindAndListen(int socket, const sockaddr_un& address, const std::string& path) {
    if (::bind(socket, General(address), sizeof(address)) != 0) {
        return SystemFailure(L"cannot make the socket", path);
    }
    if (::chmod(path.c_str(), 0600) != 0 || ::listen(socket, SOMAXCONN) != 0) {
        return SystemFailure(L"cannot listen on the socket", path);
    }
    return {};
}

/// Requires the lock of the endpoint: then the process that created the socket is dead.
std::wstring RemoveStaleSocket(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        return {};
    }
    if (!S_ISSOCK(status.st_mode)) {
        return Failure(L"cannot make the socket", path, L"something that is no socket stands there; remove it");
    }
    return ::unlink(path.c_str()) == 0 ? std::wstring() : SystemFailure(L"cannot replace the socket", path);
}

/// Requires the lock of the endpoint.
OpenedSocket MakeSocket(const std::string& path, const sockaddr_un& address) {
    if (std::wstring failure = RemoveStaleSocket(path); !failure.empty()) {
        return {{}, std::move(failure)};
    }
    platform::OwnedHandle socket = NewSocket(SOCK_NONBLOCK);
    if (!socket) {
        return {{}, SystemFailure(L"cannot make the socket", path)};
    }
    std::wstring failure = BindAndListen(platform::DescriptorOf(socket.Get()), address, path);
    return {failure.empty() ? std::move(socket) : platform::OwnedHandle(), std::move(failure)};
}

/// Removes the sockets and locks of servers that were killed. A server that starts at such an endpoint at the same
/// moment retries.
void RemoveDeadEngines(const std::string& directory) {
    std::vector<platform::DirectoryEntry> entries;
    // Files that cannot be listed are left to the next server.
    (void)platform::ListDirectory(text::FromUtf8(directory), entries);
    for (const platform::DirectoryEntry& entry : entries) {
        const std::string path = directory + "/" + text::ToUtf8(entry.name);
        platform::FileLock lock;
        if (path.ends_with(socketEnding) && lock.Take(text::FromUtf8(LockBeside(path)))) {
            RemoveStaleSocket(path);
            lock.Remove();
        }
    }
}

/// A limit of 0 would mean no limit.
bool LimitSending(int socket, std::chrono::milliseconds timeout) {
    const std::chrono::microseconds limit = std::max(timeout, std::chrono::milliseconds(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
    const timeval time{seconds.count(), (limit - seconds).count()};
    return ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof(time)) == 0;
}

/// Expects a blocking socket, because only a blocking one waits for a full backlog. Makes it non-blocking afterwards.
bool ConnectWithin(std::chrono::milliseconds timeout, int socket, const sockaddr_un& address) {
    if (!LimitSending(socket, timeout)) {
        return false;
    }
    int result = 0;
    do {
        result = ::connect(socket, General(address), sizeof(address));
    } while (result != 0 && errno == EINTR);
    return result == 0 && ::fcntl(socket, F_SETFL, O_NONBLOCK) == 0;
}

OpenedSocket ConnectFailure(const std::string& path) {
    if (errno == ENOENT || errno == ECONNREFUSED) {
        return {};
    }
    if (errno == EAGAIN) {
        return {{},
                Failure(L"the socket", path, L"the engine there is busy and takes no front ends; try again later"),
                true};
    }
    return {{}, SystemFailure(L"the socket", path)};
}

} // namespace

std::string SocketDirectory(const std::optional<std::string>& runtimeDirectory, uid_t user) {
    struct stat status {};
    const bool isThere = runtimeDirectory && !runtimeDirectory->empty() && runtimeDirectory->front() == '/' &&
                         ::lstat(runtimeDirectory->c_str(), &status) == 0;
    if (isThere && S_ISDIR(status.st_mode) && status.st_uid == user && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0) {
        return *runtimeDirectory + "/common_controller";
    }
    return "/tmp/common_controller-" + std::to_string(user);
}

bool CheckSocketDirectory(const std::string& directory, bool create, std::wstring& problem) {
    problem.clear();
    if (create && ::mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST) {
        problem = SystemFailure(L"cannot make the folder", directory);
        return false;
    }
    struct stat status {};
    if (::lstat(directory.c_str(), &status) != 0) {
        const bool isMissing = errno == ENOENT;
        problem = isMissing ? std::wstring() : SystemFailure(L"cannot look at the folder", directory);
        return isMissing;
    }
    if (!S_ISDIR(status.st_mode)) {
        problem = Failure(L"will not use", directory, L"it is no folder (or a link to one); remove it");
    } else if (status.st_uid != geteuid()) {
        problem = Failure(L"will not use the folder", directory, L"it belongs to another user");
    } else if ((status.st_mode & permissionBits) != 0700) {
        problem = Failure(L"will not use the folder", directory, L"others may have access to it; set its mode to 0700");
    }
    return problem.empty();
}

std::string SocketPathOf(const std::string& name) {
    return OwnSocketDirectory() + "/" + name + std::string(socketEnding);
}

OpenedSocket ListeningPlace::Take(const std::string& placeName) {
    name = placeName;
    OpenedSocket opened = TakeAt(SocketPathOf(name));
    if (opened.socket) {
        RemoveDeadEngines(DirectoryOf(socketPath));
    }
    return opened;
}

OpenedSocket ListeningPlace::TakeAgainIfLost() {
    const std::string path = SocketPathOf(name);
    return IsTaken(path) ? OpenedSocket() : TakeAt(path);
}

void ListeningPlace::Leave() {
    if (socketFile && platform::IdentityOf(text::FromUtf8(socketPath)) == socketFile) {
        ::unlink(socketPath.c_str());
    }
    socketFile.reset();
    lock.Remove();
}

bool ListeningPlace::IsTaken(const std::string& path) const {
    return path == socketPath && lock.IsInPlace() && socketFile &&
           platform::IdentityOf(text::FromUtf8(socketPath)) == socketFile;
}

/// Another server may hold the lock only to remove stale files, and releases it at once.
bool ListeningPlace::TakeLock(const std::string& lockPath, platform::FileLock& taken, std::wstring& problem) {
    constexpr int attempts = 10;
    constexpr std::chrono::milliseconds pause{10};
    platform::Error result = taken.Take(text::FromUtf8(lockPath));
    for (int attempt = 1; attempt < attempts && result.kind == platform::ErrorKind::InUse; ++attempt) {
        platform::SleepFor(pause);
        result = taken.Take(text::FromUtf8(lockPath));
    }
    if (!result) {
        const bool isTaken = result.kind == platform::ErrorKind::InUse;
        problem = Failure(L"cannot lock", lockPath, isTaken ? L"another engine listens there" : result.Text());
        return false;
    }
    return true;
}

/// The previous socket and lock are released only when the new socket listens.
OpenedSocket ListeningPlace::TakeAt(const std::string& path) {
    const std::optional<sockaddr_un> address = AddressOf(path);
    if (!address) {
        return {{}, TooLong(path)};
    }
    std::wstring problem;
    if (!CheckSocketDirectory(DirectoryOf(path), true, problem)) {
        return {{}, std::move(problem)};
    }
    platform::FileLock taken;
    const bool hasLock = path == socketPath && lock.IsInPlace();
    if (!hasLock && !TakeLock(LockBeside(path), taken, problem)) {
        return {{}, std::move(problem)};
    }
    OpenedSocket opened = MakeSocket(path, *address);
    if (!opened.socket) {
        taken.Remove();
        return opened;
    }
    if (!hasLock) {
        Leave();
        lock = std::move(taken);
    }
    socketPath = path;
    socketFile = platform::IdentityOf(text::FromUtf8(path));
    return opened;
}

OpenedSocket ConnectTo(const std::string& name, std::chrono::milliseconds timeout) {
    const std::string path = SocketPathOf(name);
    const std::optional<sockaddr_un> address = AddressOf(path);
    if (!address) {
        return {{}, TooLong(path)};
    }
    if (std::wstring problem; !CheckSocketDirectory(DirectoryOf(path), false, problem)) {
        return {{}, std::move(problem)};
    }
    platform::OwnedHandle socket = NewSocket(0);
    if (!socket) {
        return {{}, SystemFailure(L"cannot make a socket for", path)};
    }
    const int descriptor = platform::DescriptorOf(socket.Get());
    if (!ConnectWithin(timeout, descriptor, *address)) {
        return ConnectFailure(path);
    }
    if (!IsSameUser(descriptor)) {
        return {{}, Failure(L"will not talk to the engine at", path, L"it belongs to another user")};
    }
    return {std::move(socket), {}};
}

bool IsSameUser(int socket) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

} // namespace local_socket
