#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <sys/types.h>

#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/processes/ProcessHandle.h"

/// Where engine and front ends of one user meet on Linux: a socket in a directory that nobody else can enter.
namespace local_socket {

/// The directory of the sockets: in the user's run-time directory if `runtimeDirectory` names one that is the user's
/// own and that nobody else may write to, else in /tmp.
std::string SocketDirectory(const std::optional<std::string>& runtimeDirectory, uid_t user);

/// Makes the directory where it is missing, if `create` says so. Empty when it is a real directory of this user with
/// the mode 0700; else why it cannot be trusted.
std::wstring CheckSocketDirectory(const std::string& directory, bool create);

/// An open socket, or why there is none.
struct OpenedSocket {
    /// A descriptor, closed on exec and not waiting.
    platform::OwnedHandle socket;
    /// Empty when simply nobody listens.
    std::wstring failure;
    /// True when as many wait for the engine as the system allows.
    bool isBusy = false;
};

/// The socket of the endpoint `name`, as front ends look for it at this moment.
std::string SocketPathOf(const std::string& name);

/// An endpoint taken for listening: nobody else can take it while this lives. One thread at a time.
class ListeningPlace {
public:
    ListeningPlace() = default;
    /// Leaves the place.
    ~ListeningPlace() { Leave(); }
    ListeningPlace(const ListeningPlace&) = delete;
    ListeningPlace& operator=(const ListeningPlace&) = delete;

    /// Takes the place, replacing the socket that a dead engine left, and removes what dead engines left at other
    /// places of the same directory. The listening socket is the caller's.
    OpenedSocket Take(const std::string& placeName);

    /// Takes the place again where front ends do not find it any more: its socket, its lock or the directory was
    /// removed, or the run-time directory has come or gone. The new listening socket is the caller's; neither a socket
    /// nor a failure when there is nothing to do. A failure leaves everything as it is.
    OpenedSocket TakeAgainIfLost();

    /// Gives the place up, with its files.
    void Leave();

private:
    OpenedSocket TakeAt(const std::string& path);
    bool IsTaken(const std::string& path) const;
    static std::wstring TakeLock(const std::string& lockPath, platform::FileLock& taken);

    platform::FileLock lock;
    std::string name;
    std::string socketPath;
    std::optional<platform::FileIdentity> socketFile;
};

/// Connects to the engine that listens at `name`, if it is this user's. Waits for it up to `patience` while as many
/// wait for it already as the system allows.
OpenedSocket ConnectTo(const std::string& name, std::chrono::milliseconds patience);

/// True when the process at the other end is this user's.
bool IsSameUser(int socket);

} // namespace local_socket
