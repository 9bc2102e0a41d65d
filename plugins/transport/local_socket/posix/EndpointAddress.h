#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <sys/types.h>

#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/system/OwnedHandle.h"

/// The endpoint on Linux: a Unix domain socket in a directory that only its user can enter.
namespace local_socket {

/// The directory of the sockets: below `runtimeDirectory` if the user owns that directory and no other user may write
/// to it, otherwise in /tmp.
std::string SocketDirectory(const std::optional<std::string>& runtimeDirectory, uid_t user);

/// Creates the directory if it is missing and `create` is set. Returns true if it is a real directory of this user with
/// mode 0700, or does not exist; otherwise sets `problem` to the reason why it is not trusted.
[[nodiscard]] bool CheckSocketDirectory(const std::string& directory, bool create, std::wstring& problem);

/// An open socket, or the reason why there is none.
struct OpenedSocket {
    /// Close-on-exec and non-blocking.
    platform::OwnedHandle socket;
    /// Empty if no server listens.
    std::wstring failure;
    /// True if the backlog of the server is full.
    bool isBusy = false;
};

/// The socket path of the endpoint `name`, as clients look for it now.
std::string SocketPathOf(const std::string& name);

/// An endpoint claimed for listening; no other process can claim it while this object holds it. Not thread-safe.
class ListeningPlace {
public:
    ListeningPlace() = default;
    /// Releases the endpoint.
    ~ListeningPlace() { Leave(); }
    ListeningPlace(const ListeningPlace&) = delete;
    ListeningPlace& operator=(const ListeningPlace&) = delete;

    /// Claims the endpoint. Replaces the socket of a dead server, and removes files of dead servers at other endpoints
    /// in the same directory. The caller owns the listening socket.
    OpenedSocket Take(const std::string& placeName);

    /// Claims the endpoint again if clients cannot find it any more: the socket, its lock or the directory was removed,
    /// or the run-time directory has appeared or disappeared. The caller owns the new listening socket. Returns neither
    /// a socket nor a failure if nothing is to be done. A failure changes nothing.
    OpenedSocket TakeAgainIfLost();

    /// Releases the endpoint and removes its files.
    void Leave();

private:
    OpenedSocket TakeAt(const std::string& path);
    bool IsTaken(const std::string& path) const;
    [[nodiscard]] static bool TakeLock(const std::string& lockPath, platform::FileLock& taken, std::wstring& problem);

    platform::FileLock lock;
    std::string name;
    std::string socketPath;
    std::optional<platform::FileIdentity> socketFile;
};

/// Connects to the server at `name` if it runs as this user. Waits up to `timeout` while its backlog is full.
OpenedSocket ConnectTo(const std::string& name, std::chrono::milliseconds timeout);

/// True if the peer process runs as this user.
bool IsSameUser(int socket);

} // namespace local_socket
