#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <sys/types.h>

#include "platform/FileLock.h"
#include "platform/ProcessHandle.h"

/// Where engine and front ends of one user meet on Linux: a socket in a folder that nobody else can enter.
namespace local_socket {

/// The folder of the sockets: in the user's run-time folder if `runtimeFolder` names one that is the user's own and
/// that nobody else may write to, else in /tmp.
std::string SocketFolder(const std::optional<std::string>& runtimeFolder, uid_t user);

/// Makes the folder where it is missing, if `create` says so. Empty when it is a real folder of this user with the mode
/// 0700; else why it cannot be trusted.
std::wstring CheckSocketFolder(const std::string& folder, bool create);

/// An open socket, or why there is none.
struct OpenedSocket {
    /// A descriptor, closed on exec and not waiting.
    platform::OwnedHandle socket;
    /// Empty when simply nobody listens.
    std::wstring failure;
};

/// A meeting place taken for listening: nobody else can take it while this lives.
class ListeningPlace {
public:
    ListeningPlace() = default;
    /// The socket's file goes with it.
    ~ListeningPlace();
    ListeningPlace(const ListeningPlace&) = delete;
    ListeningPlace& operator=(const ListeningPlace&) = delete;

    /// Takes the place, replacing the socket that a dead engine left. The listening socket is the caller's.
    OpenedSocket Take(const std::string& name);

private:
    platform::FileLock lock;
    std::string socketPath;
};

/// Connects to the engine that listens at `name`, if it is this user's. Waits for it up to `patience` while as many
/// wait for it already as the system allows.
OpenedSocket ConnectTo(const std::string& name, std::chrono::milliseconds patience);

/// True when the process at the other end is this user's.
bool IsSameUser(int socket);

} // namespace local_socket
