#include "local_socket/posix/MeetingPlace.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/Environment.h"
#include "platform/Error.h"
#include "platform/Text.h"
#include "platform/posix/DescriptorHandle.h"

namespace local_socket {
namespace {

constexpr mode_t permissionBits = 07777;

std::wstring Failure(const std::wstring& what, const std::string& path, const std::wstring& why) {
    return what + L" " + platform::FromUtf8(path) + L": " + why;
}

std::wstring SystemFailure(const std::wstring& what, const std::string& path) {
    return Failure(what, path, platform::LastError().Text());
}

std::string OwnSocketFolder() {
    std::optional<std::string> runtimeFolder;
    if (const std::optional<std::wstring> value = platform::GetEnvironment(L"XDG_RUNTIME_DIR")) {
        runtimeFolder = platform::ToUtf8(*value);
    }
    return SocketFolder(runtimeFolder, geteuid());
}

/// Empty when the path is too long for a socket.
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

/// The socket calls take every kind of address by a pointer to the general one.
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

/// Only with the place's lock held: then whoever made the socket is dead.
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

/// No limit of 0: that would be none.
bool LimitSending(int socket, std::chrono::milliseconds patience) {
    const std::chrono::microseconds limit = std::max(patience, std::chrono::milliseconds(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
    const timeval time{seconds.count(), (limit - seconds).count()};
    return ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof(time)) == 0;
}

/// Takes a socket that waits, because only such a one waits for room with the engine; from then on it waits no more.
bool ConnectWithin(std::chrono::milliseconds patience, int socket, const sockaddr_un& address) {
    if (!LimitSending(socket, patience)) {
        return false;
    }
    int result = 0;
    do {
        result = ::connect(socket, General(address), sizeof(address));
    } while (result != 0 && errno == EINTR);
    return result == 0 && ::fcntl(socket, F_SETFL, O_NONBLOCK) == 0;
}

std::wstring ConnectFailure(const std::string& path) {
    if (errno == ENOENT || errno == ECONNREFUSED) {
        return {};
    }
    if (errno == EAGAIN) {
        return Failure(L"the socket", path, L"the engine there does not take front ends; try again later");
    }
    return SystemFailure(L"the socket", path);
}

} // namespace

std::string SocketFolder(const std::optional<std::string>& runtimeFolder, uid_t user) {
    struct stat status {};
    const bool isThere = runtimeFolder && !runtimeFolder->empty() && runtimeFolder->front() == '/' &&
                         ::lstat(runtimeFolder->c_str(), &status) == 0;
    if (isThere && S_ISDIR(status.st_mode) && status.st_uid == user && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0) {
        return *runtimeFolder + "/common_controller";
    }
    return "/tmp/common_controller-" + std::to_string(user);
}

std::wstring CheckSocketFolder(const std::string& folder, bool create) {
    if (create && ::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        return SystemFailure(L"cannot make the folder", folder);
    }
    struct stat status {};
    if (::lstat(folder.c_str(), &status) != 0) {
        return errno == ENOENT ? std::wstring() : SystemFailure(L"cannot look at the folder", folder);
    }
    if (!S_ISDIR(status.st_mode)) {
        return Failure(L"will not use", folder, L"it is no folder (or a link to one); remove it");
    }
    if (status.st_uid != geteuid()) {
        return Failure(L"will not use the folder", folder, L"it belongs to another user");
    }
    if ((status.st_mode & permissionBits) != 0700) {
        return Failure(L"will not use the folder", folder, L"others may have access to it; set its mode to 0700");
    }
    return {};
}

ListeningPlace::~ListeningPlace() {
    if (lock.IsHeld() && !socketPath.empty()) {
        ::unlink(socketPath.c_str());
    }
}

OpenedSocket ListeningPlace::Take(const std::string& name) {
    const std::string folder = OwnSocketFolder();
    const std::string path = folder + "/" + name + ".socket";
    const std::optional<sockaddr_un> address = AddressOf(path);
    if (!address) {
        return {{}, TooLong(path)};
    }
    if (std::wstring failure = CheckSocketFolder(folder, true); !failure.empty()) {
        return {{}, std::move(failure)};
    }
    const std::string lockPath = folder + "/" + name + ".lock";
    if (const platform::Error error = lock.Take(platform::FromUtf8(lockPath))) {
        const bool isTaken = error.kind == platform::ErrorKind::InUse;
        return {{}, Failure(L"cannot lock", lockPath, isTaken ? L"another engine listens there" : error.Text())};
    }
    if (std::wstring failure = RemoveStaleSocket(path); !failure.empty()) {
        return {{}, std::move(failure)};
    }
    platform::OwnedHandle socket = NewSocket(SOCK_NONBLOCK);
    if (!socket) {
        return {{}, SystemFailure(L"cannot make the socket", path)};
    }
    socketPath = path;
    std::wstring failure = BindAndListen(platform::DescriptorOf(socket.Get()), *address, path);
    return {std::move(socket), std::move(failure)};
}

OpenedSocket ConnectTo(const std::string& name, std::chrono::milliseconds patience) {
    const std::string folder = OwnSocketFolder();
    const std::string path = folder + "/" + name + ".socket";
    const std::optional<sockaddr_un> address = AddressOf(path);
    if (!address) {
        return {{}, TooLong(path)};
    }
    if (std::wstring failure = CheckSocketFolder(folder, false); !failure.empty()) {
        return {{}, std::move(failure)};
    }
    platform::OwnedHandle socket = NewSocket(0);
    if (!socket) {
        return {{}, SystemFailure(L"cannot make a socket for", path)};
    }
    const int descriptor = platform::DescriptorOf(socket.Get());
    if (!ConnectWithin(patience, descriptor, *address)) {
        return {{}, ConnectFailure(path)};
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
